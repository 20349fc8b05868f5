// What classes and objects of the object run-time consist of.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "platform/objc_runtime.h"

struct objc_object {
  objc_class* isa = nullptr;
};

struct objc_ivar {
  std::ptrdiff_t offset = 0;
};

struct objc_class : objc_object {
  std::string name;
  objc_class* superclass = nullptr;
  std::map<platform::SEL, platform::IMP> methods;
  std::map<std::string, objc_ivar> instanceVariables;
};
