#include "programs/kelvane-windows/tab_views.h"

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/symbols.h"

namespace kelvane {
namespace {

constexpr int kSymbolGap = 6;  // pixels between symbol and label

}  // namespace

TabView::TabView(const ViewNode& node, ViewContext& context)
    : ViewWidget(node, context),
      content_(Gtk::Orientation::VERTICAL),
      labelBox_(Gtk::Orientation::HORIZONTAL, kSymbolGap) {
  page_.set_transition_type(Gtk::RevealerTransitionType::SLIDE_DOWN);
  page_.set_transition_duration(0);
  page_.set_child(content_);
  labelBox_.set_halign(Gtk::Align::CENTER);
  labelBox_.append(symbol_);
  labelBox_.append(label_);
  show();
}

void TabView::show() {
  showFrame(content_);
  setHelp(labelBox_.Gtk::Widget::gobj(), node().help);
  label_.set_text(node().label);
  const char* symbol = symbolIcon(node().symbol);
  symbol_.set_visible(symbol);
  if (symbol) symbol_.set_from_icon_name(symbol);
  if (GtkWidget* tab = gtk_widget_get_parent(labelBox_.Gtk::Widget::gobj()))
    setAccessibleName(tab, node().label);
}

void TabView::joined(Gtk::Notebook& tabs) {
  // The toolkit's own tab around the label has neither.
  GtkWidget* tab = gtk_widget_get_parent(labelBox_.Gtk::Widget::gobj());
  if (!tab) return;
  setAccessibleName(tab, node().label);
  addPressAction(tab, std::nullopt, [this, &tabs] { tabs.set_current_page(tabs.page_num(page_)); });
}

void TabView::place(ViewWidget& child, const Place& place) { placeIn(content_, child, place); }

void TabView::remove(ViewWidget& child) { content_.remove(*child.widget()); }

TabsView::TabsView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  notebook_.set_show_border(false);
  turns_ = notebook_.property_page().signal_changed().connect([this] { showCurrent(); });
  show();
}

void TabsView::place(ViewWidget& child, const Place& place) {
  auto& tab = static_cast<TabView&>(child);
  notebook_.insert_page(*tab.widget(), tab.tabLabel(), static_cast<int>(place.index));
  notebook_.get_page(*tab.widget())->property_tab_expand() = true;
  tab.joined(notebook_);
  tabs_.push_back(&tab);
  showCurrent();
}

void TabsView::remove(ViewWidget& child) {
  std::erase(tabs_, &child);
  notebook_.remove_page(*child.widget());
  showCurrent();
}

void TabsView::showCurrent() {
  for (TabView* tab : tabs_)
    tab->setCurrent(notebook_.page_num(*tab->widget()) == notebook_.get_current_page());
}

}  // namespace kelvane
