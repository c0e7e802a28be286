// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>

#include "files/instance_lock.h"
#include "platform/system_world_qt.h"
#include "run/program_folder.h"
#include "run/session.h"
#include "ui/kit/theme.h"
#include "ui/shell/frmStart.h"
#include "ui/windows/library/frmSplash.h"

int main(int argc, char** argv) {
  using namespace tunemeadow;
  PrepareApplication();
  QApplication application(argc, argv);
  QApplication::setApplicationName("tunemeadow");
  QApplication::setDesktopFileName("org.tunemeadow.Tunemeadow");
  // The progress window of the start closes before the main window is shown; the run ends when the
  // main window has done its unload.
  QApplication::setQuitOnLastWindowClosed(false);
  ApplyTheme();
  ApplyTestNames(application);

  InstanceLock lock(ProgramFolder());
  if (!lock.TryLock()) return 0;
  ProvideShippedFiles();

  frmSplash splash;
  splash.show();
  Session session(ProgramFolder(), ExecutableBaseName());
  SystemWorld system;
  frmStart window(session, system.world);
  QObject::connect(&window, &frmStart::Unloaded, &application, &QApplication::quit,
                   Qt::QueuedConnection);
  splash.close();
  if (!window.Form_Load()) return 1;
  return QApplication::exec();
}
