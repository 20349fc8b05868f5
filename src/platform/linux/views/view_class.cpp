#include "platform/linux/views/view_class.h"

namespace platform::backend {
namespace {

void deallocView(id self, SEL) {
  delete UIView::viewOfObject(self).get();
}

}  // namespace

Class viewClass() {
  static Class cls = [] {
    Class made = registerClass("UIView", nullptr);
    addMethod(made, "dealloc", deallocView);
    return made;
  }();
  return cls;
}

void setClassOfView(UIView& view, Class cls) {
  view.object()->isa = cls;
}

}  // namespace platform::backend
