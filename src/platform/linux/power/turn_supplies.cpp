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
  if (turn == 0 || turn != turn_) {
    supplies_ = reader_.read(fields);
    turn_ = turn;
    fields_ = fields;
  } else if (fields > fields_) {
    reader_.addFigures(supplies_, fields);
    fields_ = fields;
  }
  return supplies_;
}

const std::vector<Supply>& TurnSupplies::readAfresh() {
  forget();
  return read(SupplyFields::all);
}

}  // namespace kelvane
