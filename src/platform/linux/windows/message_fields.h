// The fields of each message and of what it carries, in one place for the writer and the reader of
// the window protocol. Any thread.
//
// `describe(visit, thing)` calls `visit(key, field)` for what is always there, and
// `visit.orElse(key, field, otherwise)` for what is left out when it equals `otherwise`, or else
// the type's own default.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <type_traits>

#include "platform/linux/windows/window_protocol.h"

namespace kelvane {

// T, const or not.
template <typename M, typename T>
concept Is = std::same_as<std::remove_const_t<M>, T>;

// The names of an enumeration's values, in its order.
constexpr auto namesOf(ViewNode::Kind) {
  return std::to_array<const char*>({"text", "toggle", "radioGroup", "button", "verticalStack",
                                     "horizontalStack", "tabView", "tab", "form", "sheet", "alert",
                                     "divider"});
}
constexpr auto namesOf(ViewNode::Alignment) {
  return std::to_array<const char*>({"leading", "center"});
}
constexpr auto namesOf(ViewStep::Kind) {
  return std::to_array<const char*>({"insert", "remove", "replace", "set"});
}
constexpr auto namesOf(PathStep::Kind) {
  return std::to_array<const char*>({"move", "line", "curve", "close"});
}
constexpr auto namesOf(MenuLine::Kind) {
  return std::to_array<const char*>({"item", "separator", "placeholder"});
}
constexpr auto namesOf(FontWeight) { return std::to_array<const char*>({"regular", "medium"}); }
constexpr auto namesOf(AlertStyle) {
  return std::to_array<const char*>({"warning", "informational", "critical"});
}

// How many of its points a step uses.
constexpr std::size_t pointsOf(PathStep::Kind kind) {
  return kind == PathStep::Kind::close ? 0 : kind == PathStep::Kind::curve ? 3 : 1;
}

template <typename Visitor>
void describe(Visitor& visit, Is<ViewNode> auto& node) {
  visit("kind", node.kind);
  visit("id", node.id);
  visit.orElse("label", node.label);
  visit.orElse("action", node.action);
  visit.orElse("help", node.help);
  visit.orElse("symbol", node.symbol);
  visit.orElse("isOn", node.isOn);
  visit.orElse("options", node.options);
  visit.orElse("selection", node.selection);
  visit.orElse("isHorizontal", node.isHorizontal);
  visit.orElse("isDefault", node.isDefault);
  visit.orElse("alignment", node.alignment);
  visit.orElse("spacing", node.spacing);
  visit.orElse("horizontalPaddings", node.horizontalPaddings);
  visit.orElse("verticalPaddings", node.verticalPaddings);
  visit.orElse("paddingTop", node.paddingTop);
  visit.orElse("paddingBottom", node.paddingBottom);
  visit.orElse("width", node.width);
  visit.orElse("equalWidthGroup", node.equalWidthGroup);
  visit.orElse("children", node.children);
}

template <typename Visitor>
void describe(Visitor& visit, Is<ViewStep> auto& step) {
  visit("kind", step.kind);
  if (step.kind == ViewStep::Kind::insert) {
    visit("parent", step.parent);
    visit("index", step.index);
  } else {
    visit("id", step.id);
  }
  if (step.kind != ViewStep::Kind::remove) visit("node", step.node);
}

template <typename Visitor>
void describe(Visitor& visit, Is<PictureLayer> auto& layer) {
  visit("path", layer.path);
  visit.orElse("opacity", layer.opacity, 1.0);
  visit.orElse("color", layer.color);
}

template <typename Visitor>
void describe(Visitor& visit, Is<Picture> auto& picture) {
  visit("name", picture.name);
  visit("size", picture.size);
  visit("layers", picture.layers);
  visit.orElse("isTemplate", picture.isTemplate, true);
}

template <typename Visitor>
void describe(Visitor& visit, Is<TextRun> auto& run) {
  visit("text", run.text);
  visit.orElse("fontSize", run.fontSize);
  visit.orElse("weight", run.weight);
  visit.orElse("color", run.color);
}
template <typename Visitor>
void describe(Visitor& visit, Is<AttributedText> auto& text) {
  visit("runs", text.runs);
}

template <typename Visitor>
void describe(Visitor& visit, Is<KeyEquivalent> auto& equivalent) {
  visit.orElse("key", equivalent.key);
  visit.orElse("command", equivalent.command);
  visit.orElse("option", equivalent.option);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ShownLine> auto& line) {
  visit("line", line.line);
  visit.orElse("kind", line.kind);
  visit.orElse("title", line.title);
  visit.orElse("attributedTitle", line.attributedTitle);
  visit.orElse("isEnabled", line.isEnabled, true);
  visit.orElse("keyEquivalent", line.keyEquivalent);
  visit.orElse("isAlternate", line.isAlternate);
  visit.orElse("submenu", line.submenu);
}

template <typename Visitor>
void describe(Visitor& visit, Is<Greeting> auto& greeting) {
  visit("protocol", greeting.protocol);
  visit("dark", greeting.isDark);
  visit("reducedMotion", greeting.isMotionReduced);
}

template <typename Visitor>
void describe(Visitor& visit, Is<OpenWindow> auto& message) {
  visit("window", message.window);
  visit("title", message.title);
  visit("tree", message.tree);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ApplySteps> auto& message) {
  visit("window", message.window);
  visit("steps", message.steps);
}
template <typename Visitor>
void describe(Visitor& visit, Is<CloseWindow> auto& message) {
  visit("window", message.window);
}
template <typename Visitor>
void describe(Visitor& visit, Is<FrontWindow> auto& message) {
  visit("window", message.window);
  visit.orElse("token", message.token);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ShowAlert> auto& message) {
  visit("alert", message.alert);
  visit("title", message.content.title);
  visit.orElse("message", message.content.message);
  visit.orElse("style", message.content.style);
  visit.orElse("buttons", message.content.buttons);
  visit.orElse("minimumWidth", message.content.minimumWidth);
  visit.orElse("icon", message.content.icon);
}
template <typename Visitor>
void describe(Visitor& visit, Is<AbortAlert> auto& message) {
  visit("alert", message.alert);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ShowAbout> auto& message) {
  visit("name", message.information.name);
  visit("identifier", message.information.identifier);
  visit("version", message.information.version);
  visit("build", message.information.build);
  visit("copyright", message.information.copyright);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ShowPopover> auto& message) {
  visit("popover", message.popover);
  visit("text", message.text);
  visit.orElse("maximumTextWidth", message.maximumTextWidth);
  visit.orElse("inset", message.inset);
  visit.orElse("isAnimated", message.isAnimated, true);
  visit.orElse("anchor", message.anchor);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ClosePopover> auto& message) {
  visit("popover", message.popover);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ActivateWindows> auto& message) {
  visit.orElse("token", message.token);
  visit.orElse("anchor", message.anchor);
}
template <typename Visitor>
void describe(Visitor& visit, Is<DarkChanged> auto& message) {
  visit("dark", message.isDark);
}

template <typename Visitor>
void describe(Visitor& visit, Is<ShowMenu> auto& message) {
  visit("menu", message.menu);
  visit("lines", message.lines);
  visit.orElse("anchor", message.anchor);
  visit.orElse("token", message.token);
}
template <typename Visitor>
void describe(Visitor& visit, Is<CloseMenu> auto& message) {
  visit("menu", message.menu);
}

template <typename Visitor>
void describe(Visitor& visit, Is<NodeActed> auto& message) {
  visit("window", message.window);
  visit("action", message.action);
  visit("id", message.id);
  visit("value", message.value);
}
template <typename Visitor>
void describe(Visitor& visit, Is<WindowClosed> auto& message) {
  visit("window", message.window);
}
template <typename Visitor>
void describe(Visitor& visit, Is<AlertAnswered> auto& message) {
  visit("alert", message.alert);
  visit("button", message.button);
}
template <typename Visitor>
void describe(Visitor&, Is<AboutClosed> auto&) {}
template <typename Visitor>
void describe(Visitor& visit, Is<PopoverClosed> auto& message) {
  visit("popover", message.popover);
}
template <typename Visitor>
void describe(Visitor& visit, Is<PopoverRefused> auto& message) {
  visit("popover", message.popover);
}
template <typename Visitor>
void describe(Visitor& visit, Is<MenuChosen> auto& message) {
  visit("menu", message.menu);
  visit("line", message.line);
}
template <typename Visitor>
void describe(Visitor& visit, Is<MenuClosed> auto& message) {
  visit("menu", message.menu);
  visit.orElse("hasLostFocus", message.hasLostFocus);
}
template <typename Visitor>
void describe(Visitor& visit, Is<ItemClicked> auto& message) {
  visit("told", message.told);
  visit("place", message.place);
}

// The "kind" of each alternative, in the variant's order.
constexpr auto kindsOf(const WindowRequest&) {
  return std::to_array<const char*>({"open", "apply", "close", "front", "alert", "abortAlert",
                                     "about", "popover", "closePopover", "activate", "dark", "menu",
                                     "closeMenu"});
}
constexpr auto kindsOf(const WindowEvent&) {
  return std::to_array<const char*>({"acted", "closed", "answered", "aboutClosed", "popoverClosed",
                                     "popoverRefused", "menuChosen", "menuClosed", "itemClicked"});
}

}  // namespace kelvane
