#include "programs/kelvane-windows/control_views.h"

#include <cstddef>

#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {
namespace {

constexpr int kLineCharacters = 60;  // where a text that is longer breaks
constexpr int kOptionGap = 12;       // pixels between options side by side
constexpr int kLabelGap = 12;        // pixels between a radio group's label and its options

}  // namespace

TextView::TextView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  label_.set_wrap();
  label_.set_max_width_chars(kLineCharacters);
  label_.set_xalign(0);
  show();
}

void TextView::show() {
  showFrame(label_);
  label_.set_text(node().label);
}

ToggleView::ToggleView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  press_ = addPressAction(button_.Gtk::Widget::gobj(), false, [this] { toggle(); });
  button_.set_action_name(kPressAction);
  show();
}

void ToggleView::show() {
  showFrame(button_);
  button_.set_label(node().label);
  press_->set_state(Glib::Variant<bool>::create(node().isOn.value_or(false)));
}

RadioGroupView::RadioGroupView(const ViewNode& node, ViewContext& context)
    : ViewWidget(node, context),
      box_(Gtk::Orientation::HORIZONTAL, kLabelGap),
      heights_(Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::VERTICAL)) {
  setAccessibleRole(box_.Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_RADIO_GROUP);
  // As high as an option, the label is on the line of the first.
  label_.set_valign(Gtk::Align::START);
  heights_->add_widget(label_);
  box_.append(label_);
  box_.append(optionsBox_);
  show();
}

RadioGroupView::~RadioGroupView() {
  if (widths_) widths_->remove_widget(label_);
}

void RadioGroupView::show() {
  showFrame(box_);
  setAccessibleName(box_.Gtk::Widget::gobj(), node().label);
  label_.set_text(node().label);
  label_.set_visible(!node().label.empty());
  label_.set_xalign(node().alignment == ViewNode::Alignment::center ? 0.5F : 0.0F);
  if (widths_) widths_->remove_widget(label_);
  widths_ = node().equalWidthGroup.empty() ? Glib::RefPtr<Gtk::SizeGroup>()
                                           : context_.sizeGroup(node().equalWidthGroup);
  if (widths_) widths_->add_widget(label_);
  optionsBox_.set_orientation(node().isHorizontal ? Gtk::Orientation::HORIZONTAL
                                                  : Gtk::Orientation::VERTICAL);
  optionsBox_.set_spacing(node().isHorizontal ? kOptionGap : 0);
  showOptions();
}

void RadioGroupView::showOptions() {
  const auto& wanted = node().options;
  while (options_.size() > wanted.size()) {
    if (options_.size() == 1) heights_->remove_widget(options_.front()->button);
    optionsBox_.remove(options_.back()->button);
    options_.pop_back();
  }
  while (options_.size() < wanted.size()) {
    auto option = std::make_unique<Option>();
    Gtk::CheckButton& button = option->button;
    setAccessibleRole(button.Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_RADIO);
    option->press = addPressAction(button.Gtk::Widget::gobj(), false,
                                   [this, i = options_.size()] { choose(static_cast<int>(i)); });
    button.set_action_name(kPressAction);
    // The action makes a check button of it, the group then a radio button.
    if (options_.empty())
      heights_->add_widget(button);
    else
      button.set_group(options_.front()->button);
    optionsBox_.append(button);
    options_.push_back(std::move(option));
  }
  // The toolkit clears the others of a group when one is set, so that one comes last.
  for (const bool isOn : {false, true})
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      Option& option = *options_[i];
      option.button.set_label(wanted[i]);
      if ((node().selection == static_cast<int>(i)) == isOn)
        option.press->set_state(Glib::Variant<bool>::create(isOn));
    }
}

ButtonView::ButtonView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  button_.signal_clicked().connect([this] { press(); });
  button_.signal_map().connect([this] { showDefault(); });
  show();
}

void ButtonView::show() {
  showFrame(button_);
  button_.set_label(node().label);
  showDefault();
}

void ButtonView::showDefault() {
  auto* window = dynamic_cast<Gtk::Window*>(button_.get_root());
  if (node().isDefault) {
    button_.add_css_class("suggested-action");
    if (window) window->set_default_widget(button_);
  } else {
    button_.remove_css_class("suggested-action");
    if (window && window->get_default_widget() == &button_) window->unset_default_widget();
  }
}

DividerView::DividerView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  show();
}

}  // namespace kelvane
