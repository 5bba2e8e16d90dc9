#include "store/propagation.h"

namespace kelvane {
namespace {

thread_local bool updatingValuesFlag = false;

// Lowers the flag also when the block throws.
struct RaisedFlag {
  RaisedFlag() { updatingValuesFlag = true; }
  ~RaisedFlag() { updatingValuesFlag = false; }
};

}  // namespace

void withoutPropagation(const std::function<void()>& block) {
  const RaisedFlag raised;
  block();
}

bool isUpdatingValues() { return updatingValuesFlag; }

}  // namespace kelvane
