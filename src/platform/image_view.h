// A view that shows one picture, placed by its content mode. Main thread.
#pragma once

#include <memory>

#include "platform/image.h"
#include "platform/view.h"

namespace platform {

class UIImageView : public UIView {
 public:
  UIImageView();
  ~UIImageView() override;

  struct Impl;
  Impl& impl() { return *impl_; }

  // nullptr shows nothing.
  void setImage(ImageRef image);
  ImageRef image() const;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
