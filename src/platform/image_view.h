// A view that shows one picture, placed by its content mode. Main thread.
#pragma once

#include "platform/image.h"
#include "platform/view.h"

namespace platform {

class UIImageView : public UIView {
 public:
  UIImageView();
  ~UIImageView() override;

  // nullptr shows nothing.
  void setImage(ImageRef image);
  ImageRef image() const;

 private:
  ImageRef image_;
};

}  // namespace platform
