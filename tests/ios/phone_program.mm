// The phone's lumora on GNUstep. Its notify center is connected to that of another process: the
// names that it posts are written as lines to the file $NAMES_POSTED, and the lines that arrive in
// the pipe $NAMES_ARRIVING are delivered.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#import <Foundation/Foundation.h>

#include "command_line/main_function.h"
#include "phone/program.h"
#include "simulator/frameworks/stand_ins.h"
#include "tests/ios/xml_property_lists.h"

@interface LWDelivery : NSObject
@end

@implementation LWDelivery
+ (void)deliver:(NSString*)name {
  stand_ins::postFromOutside([name UTF8String]);
}
@end

namespace {

void deliverArriving(const std::string& pipe) {
  @autoreleasepool {
    std::ifstream names(pipe);
    for (std::string name; std::getline(names, name);) {
      [LWDelivery performSelectorOnMainThread:@selector(deliver:)
                                   withObject:[NSString stringWithUTF8String:name.c_str()]
                                waitUntilDone:NO];
    }
  }
}

void connectNotifyCenter() {
  if (const char* posted = std::getenv("NAMES_POSTED")) {
    stand_ins::onPost = [path = std::string(posted)](const std::string& name) {
      std::ofstream(path, std::ios::app) << name << '\n';
    };
  }
  if (const char* arriving = std::getenv("NAMES_ARRIVING")) {
    std::thread([pipe = std::string(arriving)] {
      [NSThread currentThread];
      deliverArriving(pipe);
    }).detach();
  }
}

}  // namespace

int main(int count, char** words) {
  @autoreleasepool {
    writePropertyListsAsXml();
    // GNUstep locks nothing before the first thread of its own.
    [NSThread detachNewThreadSelector:@selector(class) toTarget:[NSObject class] withObject:nil];
    connectNotifyCenter();
    const int code = command_line::runMain("lumora", [=] {
      return phone::performLine({words + 1, words + count});
    });
    std::fflush(stdout);
    // The thread that waits for names never ends.
    std::_Exit(code);
  }
}
