// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/glib_owned.h"

#include <glib-object.h>

namespace tunemeadow {

void FreeOfGlib::operator()(void* memory) const noexcept { g_free(memory); }

void FreeTextsOfGlib::operator()(char** texts) const noexcept { g_strfreev(texts); }

void UnrefOfGlib::operator()(void* object) const noexcept { g_object_unref(object); }

}  // namespace tunemeadow
