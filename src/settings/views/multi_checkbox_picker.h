// A set chosen from a list, one checkbox for each element. Main thread.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "settings/views/view_context.h"
#include "settings/views/view_scope.h"
#include "store/setting_observable.h"

namespace kelvane {

template <typename Element>
class MultiCheckboxPicker {
 public:
  using Selection = std::set<Element>;
  using ElementLabel = std::function<std::string(const Element&)>;

  MultiCheckboxPicker(std::vector<Element> data, Binding<Selection> selection,
                      ElementLabel elementLabel)
      : data_(std::move(data)),
        selection_(std::move(selection)),
        elementLabel_(std::move(elementLabel)) {}

  // The checkboxes in the order of the data. Elements of the selection that are not among them stay
  // selected.
  ViewNode body(ViewScope& scope, const std::string& id) const {
    ViewNode stack = makeNode(ViewNode::Kind::verticalStack, id);
    const Selection selected = selection_.get();
    for (std::size_t i = 0; i < data_.size(); ++i) {
      const Element& element = data_[i];
      ViewNode checkbox =
          makeNode(ViewNode::Kind::toggle, id + "/" + std::to_string(i), elementLabel_(element));
      checkbox.isOn = selected.contains(element);
      scope.onValue(checkbox, [selection = selection_, element](int value) {
        Selection changed = selection.get();
        if (value != 0) {
          changed.insert(element);
        } else {
          changed.erase(element);
        }
        selection.set(changed);
      });
      stack.children.push_back(std::move(checkbox));
    }
    return stack;
  }

 private:
  std::vector<Element> data_;
  Binding<Selection> selection_;
  ElementLabel elementLabel_;
};

// The same on a setting, following changes made elsewhere. The key outlives it.
template <typename Element>
class SettingsMultiCheckboxPicker {
 public:
  using Selection = std::set<Element>;
  using OnChange = std::function<void(const Selection&)>;

  // `onChange` may be empty. It is told each new set after it was stored, while the tree is shown.
  SettingsMultiCheckboxPicker(const SettingKey<Selection>& key, RunLoop& runLoop,
                              std::vector<Element> data,
                              typename MultiCheckboxPicker<Element>::ElementLabel elementLabel,
                              OnChange onChange = {})
      : key_(key),
        runLoop_(runLoop),
        data_(std::move(data)),
        elementLabel_(std::move(elementLabel)),
        onChange_(std::move(onChange)) {}

  ViewNode body(ViewScope& scope, const std::string& id) const {
    auto observable = std::make_shared<SettingObservable<Selection>>(key_, runLoop_);
    scope.redrawOn(observable->objectWillChange());
    if (onChange_) {
      scope.keep(std::make_shared<UserDefaultsKeyObservation>(
          observe(key_, {}, [onChange = onChange_](const KeyChange<Selection>& change) {
            if (change.newValue != change.oldValue) onChange(change.newValue);
          })));
    }
    const Binding<Selection> selection{
        [observable] { return observable->value(); },
        [observable](const Selection& value) { observable->setValue(value); }};
    return MultiCheckboxPicker<Element>(data_, selection, elementLabel_).body(scope, id);
  }

 private:
  const SettingKey<Selection>& key_;
  RunLoop& runLoop_;
  std::vector<Element> data_;
  typename MultiCheckboxPicker<Element>::ElementLabel elementLabel_;
  OnChange onChange_;
};

}  // namespace kelvane
