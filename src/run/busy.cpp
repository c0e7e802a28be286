// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/busy.h"

#include <utility>

namespace tunemeadow {

Busy::Busy(Session& session, Interaction& interaction, BusyWith with)
    : session_(session),
      interaction_(interaction),
      with_(with),
      busy_before_(std::exchange(session.busy, true)),
      flag_before_(with.flag != nullptr && std::exchange(*with.flag, true)),
      durability_before_(session.connection.CurrentDurability()) {
  if (with_.batch) session_.connection.SetDurability(Durability::kBatch);
  if (with_.pointer) interaction_.SetBusyPointer(true);
  if (with_.closed_window) interaction_.EnableMainWindow(false);
}

Busy::~Busy() {
  if (with_.pointer) interaction_.SetBusyPointer(false);
  if (with_.closed_window) interaction_.EnableMainWindow(true);
  if (with_.batch) session_.connection.SetDurability(durability_before_);
  if (with_.flag != nullptr) *with_.flag = flag_before_;
  session_.busy = busy_before_;
}

}  // namespace tunemeadow
