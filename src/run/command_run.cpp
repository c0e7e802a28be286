// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/command_run.h"

#include <exception>

namespace tunemeadow {

bool RunAndTell(Interaction& interaction, const std::function<void()>& work) {
  MessageBox box;
  try {
    work();
    return true;
  } catch (const DatabaseError& error) {
    box.text = error.WithStatement();
  } catch (const std::exception& error) {
    box.text = error.what();
  }
  interaction.ShowMessage(box);
  return false;
}

bool RunCommand(const Session& session, Interaction& interaction,
                const std::function<void()>& work) {
  return MayBegin(session) && RunAndTell(interaction, work);
}

}  // namespace tunemeadow
