#include "host/home_screen/dock_view.h"

#include <utility>

namespace host {
namespace {

platform::CGFloat ownHeight = 0;

platform::CGFloat ownDefaultHeight(platform::id /*self*/, platform::SEL /*selector*/) {
  return ownHeight;
}

}  // namespace

void DockView::registerClass(platform::CGFloat height) {
  ownHeight = height;
  platform::Class cls =
      platform::backend::registerClass("SBDockView", platform::backend::viewClass());
  platform::backend::addClassMethod(cls, "defaultHeight", ownDefaultHeight);
}

std::shared_ptr<DockView> DockView::make(Idiom idiom) {
  return platform::backend::makeViewOfClass<DockView>(platform::objc_getClass("SBDockView"), idiom);
}

platform::CGFloat DockView::defaultHeight() {
  return platform::objc_msgSend<platform::CGFloat>(
      platform::classObject(platform::objc_getClass("SBDockView")), "defaultHeight");
}

void DockView::layOut(platform::CGSize screen, artwork::DockEdge edge) {
  const platform::CGFloat height = defaultHeight();
  edge_ = edge;
  forgetPainting();
  setFrame(edge == artwork::DockEdge::Right
               ? platform::CGRect{screen.width - height, 0, height, screen.height}
               : platform::CGRect{0, screen.height - height, screen.width, height});
}

void DockView::setGlimpse(std::shared_ptr<const Glimpse> behind) {
  behind_ = std::move(behind);
  forgetPainting();
}

const artwork::App* DockView::appAt(artwork::Point point) const {
  const platform::CGRect area = frame();
  return artwork::appAt(artwork::dockIcons({area.width, area.height}, edge_, idiom_),
                        {point.x - area.x, point.y - area.y});
}

void DockView::paint(cairo_t* context, artwork::Size size) {
  const platform::CGRect area = frame();
  const double brightness =
      behind_ ? behind_->brightness({area.x, area.y, area.width, area.height}) : 0;
  artwork::drawDock(context, size, edge_, idiom_, artwork::inkOn(brightness).text, [&] {
    if (!behind_) return;
    cairo_translate(context, -area.x, -area.y);
    behind_->paint(context);
  });
}

}  // namespace host
