// A view that shows one image, placed by its content mode. Main thread. Nothing here fails.
#pragma once

#include <memory>

#include "platform/image.h"
#include "platform/view.h"

namespace platform {

class UIImageView : public UIView {
 public:
  UIImageView();
  ~UIImageView() override;

  // Public only so that all files of the backend can use it.
  struct Impl;
  Impl& impl() { return *impl_; }

  // Shows the image, which the view retains. nullptr shows nothing.
  void setImage(ImageRef image);
  ImageRef image() const;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
