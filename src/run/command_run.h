// SPDX-License-Identifier: GPL-3.0-or-later
// Where every command begins and ends. Nothing else looks whether something is at work before it
// begins, and nothing else catches what a command lets out.
#pragma once

#include <functional>

#include "run/interaction.h"
#include "run/session.h"

namespace tunemeadow {

/// Whether a command may begin, or a timer may act: nothing else is at work.
[[nodiscard]] inline bool MayBegin(const Session& session) noexcept { return !session.busy; }

/// Runs `work` and tells what it throws in a box: the text of the error and, where the store has
/// refused a statement, that statement on a line of its own. The scopes inside have put everything
/// back by then; rows and files that were written before stay. Nothing is thrown. True: `work` came
/// to its end.
bool RunAndTell(Interaction& interaction, const std::function<void()>& work);

/// The same where nothing else is at work; otherwise nothing happens, and it is false.
bool RunCommand(const Session& session, Interaction& interaction,
                const std::function<void()>& work);

}  // namespace tunemeadow
