// Makes programs on GNUstep write property lists as the device does.
#pragma once

#import <Foundation/Foundation.h>

// Otherwise GNUstep writes them in its own format.
inline void writePropertyListsAsXml() {
  [[NSUserDefaults standardUserDefaults]
      setVolatileDomain:[NSDictionary dictionaryWithObject:@"YES" forKey:@"GSMacOSXCompatible"]
                forName:@"xml"];
  [[NSUserDefaults standardUserDefaults] setSearchList:[NSArray arrayWithObject:@"xml"]];
}
