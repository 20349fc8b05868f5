// Receives the state of a view as named values, for inspection of the running process. The host
// implements it and UIView::describe fills it. Main thread.
#pragma once

#include <string_view>

namespace platform {

class ViewDescription {
 public:
  virtual ~ViewDescription() = default;
  virtual void addText(std::string_view name, std::string_view value) = 0;
  virtual void addNumber(std::string_view name, double value) = 0;
  virtual void addInteger(std::string_view name, long long value) = 0;
  virtual void addFlag(std::string_view name, bool value) = 0;
};

}  // namespace platform
