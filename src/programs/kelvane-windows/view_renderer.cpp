#include "programs/kelvane-windows/view_renderer.h"

#include <cstdio>
#include <utility>

namespace kelvane {

ViewRenderer::ViewRenderer(Gtk::Window& window, const ViewNode& tree, ViewPart::Acted acted)
    : context_{window, std::move(acted),
               [this](const std::string& name) {
                 auto& group = sizeGroups_[name];
                 if (!group) group = Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::HORIZONTAL);
                 return group;
               }},
      parts_(tree, [this](const ViewNode& node) { return makeViewWidget(node, context_); }) {}

void ViewRenderer::apply(const std::vector<ViewStep>& steps) {
  for (const std::string& problem : parts_.apply(steps))
    std::fprintf(stderr, "kelvane-windows: left out a change: %s\n", problem.c_str());
}

}  // namespace kelvane
