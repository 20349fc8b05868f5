// Describes hooks that were taken or missed, for developers of extensions. The caller must keep the
// classes from changing meanwhile.
#pragma once

#include <string>
#include <vector>

#include "platform/objc_runtime.h"

namespace platform::backend {

// code: the function in the extension, whose library the text names.
std::string textOfReplacedMethod(Class cls, SEL selector, IMP code);
// cls may be nullptr. Tells also which methods the class has. other: the metaclass of a class, or
// the class of a metaclass.
std::string textOfMissingMethod(Class cls, Class other, SEL selector, IMP code);
// For a message to an object of a class that does not have it. caller: an address in the extension.
std::string textOfMissingMessage(Class cls, Class other, SEL selector, const void* caller);
std::string textOfAddedMethod(Class cls, SEL selector, IMP code);
// For a method that is not added, because the class has it.
std::string textOfPresentMethod(Class cls, SEL selector, IMP code);
// Tells also which variables the class has. caller: an address in the extension.
std::string textOfMissingVariable(Class cls, const std::string& name, const void* caller);
// classes: the names of those that exist.
std::string textOfMissingClass(const std::string& name, const std::vector<std::string>& classes,
                               const void* caller);

}  // namespace platform::backend
