// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell_open_qt.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QUrl>

#include "core/paths.h"
#include "files/file_facts.h"
#include "platform/file_urls.h"
#include "platform/page_browser.h"

namespace tunemeadow {

bool QtShellOpener::Open(const std::string& path_or_url) {
  const bool is_url = IsUrl(path_or_url);
  if (!is_url && !MyFileExists(path_or_url)) return false;
  // The desktop's opener is started in any case, and tells nobody that it found no program.
  if (!is_url && path_or_url.ends_with(".html") && !SomethingShowsPages()) return false;
  const std::string url = is_url ? path_or_url : FileUrl(path_or_url);
  return QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url)));
}

}  // namespace tunemeadow
