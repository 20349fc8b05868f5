// Reads and writes lists of delays through the device's own backend, for comparison with the Linux
// programs: exchange delays PATH | store-delays PATH TEXT...

#include <cstdio>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>

#include "platform/property_list.h"
#include "tests/ios/xml_property_lists.h"

int main(int count, char** words) {
  @autoreleasepool {
    writePropertyListsAsXml();
    const std::vector<std::string> arguments(words + 1, words + count);
    const std::string command = arguments.at(0);
    if (command == "delays") {
      const auto delays = platform::arrayWithContentsOfFile(arguments.at(1));
      for (const std::string& delay : *delays) std::printf("%s\n", delay.c_str());
    } else if (command == "store-delays") {
      platform::writeArrayToFile({arguments.begin() + 2, arguments.end()}, arguments.at(1));
    }
  }
  return 0;
}
