// A window's contents as a plain value: what is shown, not how. Any thread.
//
// Made by the views of the settings, compared by the kit, drawn by a platform. A platform reports
// events by action id and never changes a tree: a control goes on showing what its node says until
// a step changes the node.
//
// A sheet or an alert is shown over the window for as long as it is in the tree, wherever it stands
// there, and takes no room among its siblings. Sheet: the content, then the buttons of its lower
// edge, of which the default one confirms. Alert: `label` is the title, texts among the children
// are the message; without buttons it has the platform's one default button. The `action` of either
// is sent when the user ends it other than by a button among its children: by Escape, by the
// default button of an alert. It goes when the tree says so.
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
  std::string id;      // path within the tree, of this node alone, stable from one tree to the next
  std::string label;   // the text, the toggle's or button's title, the tab's name
  std::string action;  // sent back when the user acts on the node; empty: it has no action
  std::string help;    // shown on hover; empty: none
  std::string symbol;  // name of a symbol image beside the label; empty: none

  std::optional<bool> isOn;          // toggles
  std::vector<std::string> options;  // radio groups, in the order shown
  std::optional<int> selection;      // radio groups: index into `options`
  bool isHorizontal = false;         // radio groups: options side by side
  bool isDefault = false;            // buttons: pressed by Return

  // Stacks: of the children across the stack. Radio groups: of the label in an equal width.
  Alignment alignment = Alignment::leading;
  std::optional<double> spacing;  // stacks: points between children; absent: the platform's own
  int horizontalPaddings = 0;     // how often the platform's standard padding stands left and right
  int verticalPaddings = 0;       // the same above and below
  double paddingTop = 0;          // points, besides those
  double paddingBottom = 0;
  std::optional<double> width;  // points, paddings included; absent: by content
  // The labels of the radio groups of one group are as wide as the widest; empty: none.
  std::string equalWidthGroup;

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
