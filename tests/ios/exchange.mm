// Reads and writes a device's files through its own backend, for comparison with the Linux
// programs: exchange get KEY | put KEY VALUE | delays PATH | store-delays PATH
// TEXT...

#include <cstdio>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>

#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"

int main(int count, char** words) {
  @autoreleasepool {
    // Otherwise GNUstep writes property lists in its own format.
    [[NSUserDefaults standardUserDefaults]
        setVolatileDomain:[NSDictionary dictionaryWithObject:@"YES" forKey:@"GSMacOSXCompatible"]
                  forName:@"exchange"];
    [[NSUserDefaults standardUserDefaults] setSearchList:[NSArray arrayWithObject:@"exchange"]];
    const std::vector<std::string> arguments(words + 1, words + count);
    const std::string command = arguments.at(0);
    if (command == "get") {
      const auto settings =
          platform::NSMutableDictionary::dictionaryWithContentsOfFile(lumora::settingsPath);
      const auto text = settings ? settings->stringForKey(arguments.at(1)) : std::nullopt;
      std::printf("%s\n", text.value_or("(none)").c_str());
    } else if (command == "put") {
      lumora::setPreferencesObjectKey(arguments.at(2), arguments.at(1));
    } else if (command == "delays") {
      const auto delays = platform::arrayWithContentsOfFile(arguments.at(1));
      for (const std::string& delay : *delays) std::printf("%s\n", delay.c_str());
    } else if (command == "store-delays") {
      platform::writeArrayToFile({arguments.begin() + 2, arguments.end()}, arguments.at(1));
    }
  }
  return 0;
}
