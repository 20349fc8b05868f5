// The dock, and the class "SBDockView" that returns its height. Main thread.
#pragma once

#include <memory>

#include "host/artwork/dock.h"
#include "host/home_screen/cached_view.h"
#include "host/options/idiom.h"
#include "host/wallpaper/glimpse.h"
#include "platform/linux/views/view_class.h"

namespace host {

class DockView : public CachedView {
 public:
  // Registers the class "SBDockView". height: the thickness of the dock in points. Call it once,
  // before make.
  static void registerClass(platform::CGFloat height);
  static std::shared_ptr<DockView> make(Idiom idiom);

  // Returns the dock's thickness in points. Asks the class by name, so that a replaced method
  // applies.
  static platform::CGFloat defaultHeight();

  // Puts the dock along an edge of a screen of this size in points.
  void layOut(platform::CGSize screen, artwork::DockEdge edge);

  // Sets what the plate lets through.
  void setGlimpse(std::shared_ptr<const Glimpse> behind);

  // Returns the app whose icon is at this point of the screen, or nullptr.
  const artwork::App* appAt(artwork::Point point) const;

 protected:
  void paint(cairo_t* context, artwork::Size size) override;

 private:
  template <typename View, typename... Arguments>
  friend std::shared_ptr<View> platform::backend::makeViewOfClass(platform::Class, Arguments&&...);
  explicit DockView(Idiom idiom) : idiom_(idiom) {}

  const Idiom idiom_;
  std::shared_ptr<const Glimpse> behind_;
  artwork::DockEdge edge_ = artwork::DockEdge::Bottom;
};

}  // namespace host
