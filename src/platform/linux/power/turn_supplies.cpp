#include "platform/linux/power/turn_supplies.h"

#include <glib.h>

namespace kelvane {
namespace {

// The moment at which the main loop began to dispatch what was ready. All that it tells of had
// happened before, so what is read from then on is not older.
std::int64_t currentTurn() {
  GSource* source = g_main_current_source();
  return source ? g_source_get_time(source) : 0;
}

}  // namespace

const std::vector<Supply>& TurnSupplies::read(SupplyFields fields) {
  const std::int64_t turn = currentTurn();
  const bool isRead =
      turn != 0 && turn == turn_ && (fields == fields_ || fields_ == SupplyFields::all);
  if (!isRead) {
    supplies_ = readSupplies(directory_, fields);
    turn_ = turn;
    fields_ = fields;
  }
  return supplies_;
}

const std::vector<Supply>& TurnSupplies::readAfresh() {
  turn_ = 0;
  return read(SupplyFields::all);
}

}  // namespace kelvane
