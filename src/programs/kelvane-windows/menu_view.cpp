#include "programs/kelvane-windows/menu_view.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/label.h>
#include <gtkmm/separator.h>
#include <gtkmm/window.h>
#include <pangomm/attrlist.h>

#include "platform/linux/glib/glib_ptr.h"
#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {
namespace {

// A size in points is meant beside a menu's usual one, which is the desktop's to choose here.
constexpr double kUsualSize = 13;
constexpr const char* kClosedArrow = "pan-end-symbolic";
constexpr const char* kOpenArrow = "pan-down-symbolic";
constexpr int kKeysGap = 24;  // pixels

guint16 channel(double value) {
  return static_cast<guint16>(std::lround(std::clamp(value, 0.0, 1.0) * 65535));
}

Pango::AttrList attributesOf(const AttributedText& text) {
  Pango::AttrList list;
  unsigned start = 0;
  for (const TextRun& run : text.runs) {
    const auto end = start + static_cast<unsigned>(run.text.size());
    const auto add = [&](Pango::Attribute attribute) {
      attribute.set_start_index(start);
      attribute.set_end_index(end);
      list.insert(attribute);
    };
    if (run.fontSize && *run.fontSize > 0)
      add(Pango::Attribute::create_attr_scale(*run.fontSize / kUsualSize));
    if (run.weight == FontWeight::medium)
      add(Pango::Attribute::create_attr_weight(Pango::Weight::MEDIUM));
    if (run.color)
      add(Pango::Attribute::create_attr_foreground(
          channel(run.color->red), channel(run.color->green), channel(run.color->blue)));
    start = end;
  }
  return list;
}

std::string textOf(const KeyEquivalent& equivalent) {
  unsigned modifiers = 0;
  if (equivalent.command) modifiers |= GDK_CONTROL_MASK;
  if (equivalent.option) modifiers |= GDK_ALT_MASK;
  const guint key = gdk_unicode_to_keyval(g_utf8_get_char(equivalent.key.c_str()));
  const GCharPtr text(gtk_accelerator_get_label(key, static_cast<GdkModifierType>(modifiers)));
  return text.get();
}

// A button that no theme takes for one.
Gtk::Button* makeLineButton() {
  return Gtk::manage(
      Glib::wrap(GTK_BUTTON(g_object_new(GTK_TYPE_BUTTON, "css-name", "menuline", "accessible-role",
                                         GTK_ACCESSIBLE_ROLE_MENU_ITEM, nullptr))));
}

gunichar folded(gunichar character) { return g_unichar_tolower(character); }

bool isShown(const Gtk::Widget& widget) { return widget.get_mapped() && widget.get_sensitive(); }

}  // namespace

MenuView::MenuView(const std::vector<ShownLine>& lines, std::function<void(std::uint32_t)> chosen)
    : chosen_(std::move(chosen)), box_(Gtk::Orientation::VERTICAL) {
  box_.add_css_class("menu-lines");
  add(box_, lines, nullptr);
  hold(false, false);
}

void MenuView::add(Gtk::Box& box, const std::vector<ShownLine>& lines, Row* parent) {
  bool isSeparatorDue = false;
  for (const ShownLine& line : lines) {
    // Separators show only between two lines, one at a time.
    if (line.kind == MenuLine::Kind::separator) {
      isSeparatorDue = box.get_first_child();
      continue;
    }
    if (std::exchange(isSeparatorDue, false))
      box.append(*Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL));
    Row& row = *rows_.emplace_back(std::make_unique<Row>(Row{.line = line, .parent = parent}));
    if (line.kind == MenuLine::Kind::item) addLine(box, row);
  }
}

void MenuView::addLine(Gtk::Box& box, Row& row) {
  const ShownLine& line = row.line;
  row.text = line.attributedTitle ? line.attributedTitle->plainText() : line.title;
  row.button = makeLineButton();
  row.widget = row.button;
  setAccessibleName(row.button->Gtk::Widget::gobj(), row.text);
  auto* content = Gtk::make_managed<Gtk::Box>();
  auto* title = Gtk::make_managed<Gtk::Label>(row.text);
  title->set_xalign(0);
  title->set_hexpand();
  if (line.attributedTitle) {
    auto attributes = attributesOf(*line.attributedTitle);
    title->set_attributes(attributes);
  }
  content->append(*title);
  if (!line.keyEquivalent.key.empty()) {
    auto* keys = Gtk::make_managed<Gtk::Label>(textOf(line.keyEquivalent));
    keys->add_css_class("menu-keys");
    keys->set_margin_start(kKeysGap);
    content->append(*keys);
  }
  row.button->set_child(*content);
  row.button->set_sensitive(line.isEnabled);
  row.button->signal_clicked().connect([this, &row] { choose(row); });
  const auto pointer = Gtk::EventControllerMotion::create();
  pointer->signal_enter().connect([&row](double, double) { row.button->grab_focus(); });
  pointer->signal_leave().connect([&row] {
    auto* window = dynamic_cast<Gtk::Window*>(row.button->get_root());
    if (window && row.button->has_focus()) window->unset_focus();
  });
  row.button->add_controller(pointer);
  box.append(*row.button);
  if (line.submenu.empty()) return;

  row.arrow = Gtk::make_managed<Gtk::Image>();
  row.arrow->set_margin_start(kKeysGap);
  content->append(*row.arrow);
  row.submenu = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  setAccessibleRole(row.submenu->Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_MENU);
  setAccessibleName(row.submenu->Gtk::Widget::gobj(), row.text);
  row.submenu->add_css_class("submenu");
  box.append(*row.submenu);
  add(*row.submenu, line.submenu, &row);
  open(row, false);
}

void MenuView::hold(bool command, bool option) {
  std::map<Row*, Row*> latest;  // of each menu, by the line that it belongs to
  for (const auto& each : rows_) {
    Row& row = *each;
    Row*& before = latest[row.parent];
    const KeyEquivalent& keys = row.line.keyEquivalent;
    if (row.line.isAlternate && row.widget) {
      const bool isWanted = keys.command == command && keys.option == option;
      row.widget->set_visible(isWanted);
      if (before && before->widget) before->widget->set_visible(!isWanted);
      if (isWanted) before = nullptr;
    } else {
      if (row.widget) row.widget->set_visible();
      before = &row;
    }
  }
}

void MenuView::open(Row& row, bool isOpen) {
  row.submenu->set_visible(isOpen);
  row.arrow->set_from_icon_name(isOpen ? kOpenArrow : kClosedArrow);
  gtk_accessible_update_state(GTK_ACCESSIBLE(row.button->gobj()), GTK_ACCESSIBLE_STATE_EXPANDED,
                              static_cast<gboolean>(isOpen), -1);
}

void MenuView::choose(Row& row) {
  if (row.submenu) return open(row, !row.submenu->get_visible());
  const auto chosen = chosen_;  // which may destroy the view
  chosen(row.line.line);
}

std::vector<MenuView::Row*> MenuView::reachable() const {
  std::vector<Row*> rows;
  for (const auto& row : rows_)
    if (row->button && isShown(*row->button)) rows.push_back(row.get());
  return rows;
}

MenuView::Row* MenuView::focused() const {
  const auto rows = reachable();
  const auto found = std::ranges::find_if(rows, [](Row* row) { return row->button->is_focus(); });
  return found == rows.end() ? nullptr : *found;
}

void MenuView::step(int direction) {
  const auto rows = reachable();
  const auto found = std::ranges::find(rows, focused());
  if (rows.empty() || found == rows.end()) return goToEnd(-direction);
  const auto count = static_cast<std::ptrdiff_t>(rows.size());
  const auto next = (found - rows.begin() + direction + count) % count;
  rows[static_cast<std::size_t>(next)]->button->grab_focus();
}

void MenuView::goToEnd(int direction) {
  const auto rows = reachable();
  if (!rows.empty()) (direction > 0 ? rows.back() : rows.front())->button->grab_focus();
}

void MenuView::enterSubmenu() {
  Row* row = focused();
  if (!row || !row->submenu) return;
  open(*row, true);
  const auto first = std::ranges::find_if(
      rows_, [&](const auto& each) { return each->parent == row && each->line.isEnabled; });
  if (first != rows_.end() && (*first)->button) (*first)->button->grab_focus();
}

void MenuView::leaveSubmenu() {
  Row* row = focused();
  if (!row) return;
  if (row->parent) row = row->parent;
  if (!row->submenu) return;
  row->button->grab_focus();
  open(*row, false);
}

void MenuView::chooseFocused() {
  Row* row = focused();
  if (row && row->submenu && !row->submenu->get_visible()) return enterSubmenu();
  if (row) choose(*row);
}

void MenuView::goToInitial(gunichar character) {
  auto rows = reachable();
  const auto found = std::ranges::find(rows, focused());
  if (found != rows.end()) std::ranges::rotate(rows, found + 1);
  for (Row* row : rows)
    if (folded(g_utf8_get_char(row->text.c_str())) == folded(character)) {
      row->button->grab_focus();
      return;
    }
}

bool MenuView::chooseKey(gunichar character, bool command, bool option) {
  for (const auto& row : rows_) {
    const KeyEquivalent& keys = row->line.keyEquivalent;
    if (keys.key.empty() || !row->line.isEnabled || keys.command != command ||
        keys.option != option || g_utf8_get_char(keys.key.c_str()) != character)
      continue;
    choose(*row);
    return true;
  }
  return false;
}

}  // namespace kelvane
