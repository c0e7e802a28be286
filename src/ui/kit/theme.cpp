// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/theme.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>
#include <QStyle>
#include <QToolTip>
#include <QWidget>

#include "ui/kit/combo_names.h"

// The resources of a static library are linked only where somebody asks for them, and the asking
// must stand outside of any namespace.
static void LoadResources() { Q_INIT_RESOURCE(icons); }

namespace tunemeadow {
namespace {

QPalette DarkPalette() {
  const QColor window(0x35, 0x38, 0x3c);
  const QColor base(0x1e, 0x1f, 0x22);
  const QColor text(0xe4, 0xe6, 0xe8);
  const QColor dim(0x8a, 0x8d, 0x91);
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, QColor(0x24, 0x26, 0x29));
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  palette.setColor(QPalette::Button, QColor(0x41, 0x45, 0x4a));
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x41));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf2));
  palette.setColor(QPalette::LinkVisited, QColor(0xb3, 0x9d, 0xdb));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dim);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x4a, 0x4d, 0x52));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, dim);
  return palette;
}

/// Fusion, but for the pictures on the buttons of dialogs, which no desktop has any more.
class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle() : QProxyStyle(QStringLiteral("fusion")) {}

  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* data) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }
};

class TestNames : public QObject {
 public:
  using QObject::QObject;

  [[nodiscard]] bool eventFilter(QObject* object, QEvent* event) override {
    // Some are polished while they are made, before they have their name.
    if (event->type() != QEvent::Polish && event->type() != QEvent::Show) return false;
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || widget->objectName().isEmpty()) return false;
    if (widget->objectName().startsWith(QLatin1String("qt_"))) return false;
    if (widget->accessibleDescription().isEmpty()) {
      widget->setAccessibleDescription(QLatin1Char('#') + widget->objectName());
    }
    return false;
  }
};

}  // namespace

void PrepareApplication() {
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void ApplyTheme() {
  LoadResources();
  InstallComboNames();
  QApplication::setStyle(new ProgramStyle);
  QIcon::setThemeName("tm");
  QApplication::setWindowIcon(QIcon::fromTheme("tunemeadow"));
  const QByteArray wanted = qgetenv("TUNEMEADOW_PALETTE");
  if (wanted == "dark") QApplication::setPalette(DarkPalette());
  if (wanted == "light") QApplication::setPalette(QApplication::style()->standardPalette());
  QToolTip::setPalette(QApplication::palette());
}

void ApplyTestNames(QApplication& application) {
  if (!qEnvironmentVariableIsEmpty("TESTNAMES")) {
    application.installEventFilter(new TestNames(&application));
  }
}

}  // namespace tunemeadow
