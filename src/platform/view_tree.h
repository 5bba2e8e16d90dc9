// A window's contents as a plain value: what is shown, not how. Any thread.
//
// Made by the functions of the settings, compared by the kit, drawn by a platform. A platform
// reports events by action id and never changes a tree.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelvane {

struct ViewNode {
  enum class Kind {
    text,
    toggle,
    radioGroup,
    button,
    verticalStack,
    horizontalStack,
    tabView,
    tab,
    form,
    sheet,
    alert,
    divider,
  };
  enum class Alignment { leading, center };

  Kind kind = Kind::text;
  std::string id;      // path within the tree, stable from one tree to the next
  std::string label;   // the text, the toggle's or button's title, the tab's name
  std::string action;  // sent back when the user acts on the node; empty: it has no action
  std::string help;    // shown on hover; empty: none
  std::string symbol;  // name of a symbol image beside the label; empty: none

  std::optional<bool> isOn;          // toggles
  std::vector<std::string> options;  // radio groups, in the order shown
  std::optional<int> selection;      // radio groups: index into `options`
  bool isHorizontal = false;         // radio groups: options side by side
  bool isDefault = false;            // buttons: pressed by Return

  Alignment alignment = Alignment::leading;  // stacks
  double spacing = 0;                        // stacks: points between children
  double paddingTop = 0;                     // points, besides the platform's own
  double paddingBottom = 0;
  std::optional<double> width;  // points; absent: by content
  std::string equalWidthGroup;  // labels of one group are as wide as the widest; empty: none

  std::vector<ViewNode> children;
  bool operator==(const ViewNode&) const = default;
};

// One change of a shown tree; nodes are named by their ids.
struct ViewStep {
  enum class Kind { insert, remove, replace, set };
  Kind kind = Kind::set;
  std::string parent;  // insert: id of the parent
  int index = 0;       // insert: place among the parent's children
  std::string id;      // remove, replace, set: the node
  ViewNode node;       // insert, replace: the whole node; set: the same node without its children
};

}  // namespace kelvane
