// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/page_browser.h"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/glib_owned.h"
#include "platform/program_path.h"

namespace tunemeadow {
namespace {

constexpr std::array kBrowsers = {"x-www-browser", "firefox", "chromium", "google-chrome"};

}  // namespace

bool SomethingShowsPages() {
  if (std::getenv("BROWSER") != nullptr) return true;
  const auto is_there = [](const char* name) { return !ProgramPath(name).empty(); };
  if (std::any_of(kBrowsers.begin(), kBrowsers.end(), is_there)) return true;
  const GlibObject<GAppInfo> program(g_app_info_get_default_for_type("text/html", FALSE));
  return program != nullptr;
}

}  // namespace tunemeadow
