// The dock, and the class "SBDockView" that knows its height.
#pragma once

#include <memory>

#include "host/artwork/dock.h"
#include "host/home_screen/cached_view.h"
#include "host/options/idiom.h"
#include "platform/linux/views/view_class.h"

namespace host {

class DockView : public CachedView {
 public:
  // Registers the class "SBDockView", for a dock of this thickness in points.
  static void registerClass(platform::CGFloat height);
  static std::shared_ptr<DockView> make(Idiom idiom);

  // The dock's thickness in points, asked of the class by name, as everybody in the process does.
  static platform::CGFloat defaultHeight();

  // Along this edge of a screen of this size.
  void layOut(platform::CGSize screen, artwork::DockEdge edge);

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  template <typename View, typename... Arguments>
  friend std::shared_ptr<View> platform::backend::makeViewOfClass(platform::Class, Arguments&&...);
  explicit DockView(Idiom idiom) : idiom_(idiom) {}

  const Idiom idiom_;
  artwork::DockEdge edge_ = artwork::DockEdge::Bottom;
};

}  // namespace host
