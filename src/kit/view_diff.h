// Turning one view tree into another by steps, so that a window changes only what differs. Pure
// functions, any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/view_tree.h"

namespace kelvane {

// The steps from one tree to the other, to be applied in order; none when they are equal. Children
// are matched by id and keep as many places as possible: one that changes places is removed and
// inserted. A node of another kind, or a root of another id, is replaced as a whole.
std::vector<ViewStep> viewDifferences(const ViewNode& from, const ViewNode& to);

// Applies the steps in order. One that can't be done (a node that isn't there, a place that isn't,
// the removal of the root, a kind or id that `set` would change) is left out; the answer says what
// was wrong with the first of these.
std::optional<std::string> applySteps(ViewNode& tree, const std::vector<ViewStep>& steps);

}  // namespace kelvane
