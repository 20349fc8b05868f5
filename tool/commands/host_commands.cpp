#include "tool/commands/host_commands.h"

#include <memory>

#include "tool/device/host_connection.h"
#include "tool/device/host_lifetime.h"

namespace tool {
namespace {

struct AdvanceOptions {
  double seconds = 0;
  double timeout = usualTimeout.count();
};

void advance(const DeviceFolder& device, const AdvanceOptions& options) {
  HostConnection::require(device)->advance(
      std::chrono::round<std::chrono::nanoseconds>(Seconds(options.seconds)),
      Seconds(options.timeout));
}

}  // namespace

void addHostCommands(CLI::App& lumora, Context& context) {
  auto timeout = std::make_shared<double>(usualTimeout.count());
  auto* wait = addCommand(lumora, context, "wait", "wait until the home screen runs",
                          [&context, timeout] { awaitHost(context.device(), Seconds(*timeout)); });
  addTimeout(wait, *timeout);
  auto* stop = addCommand(lumora, context, "stop", "stop what `lumora run` has started",
                          [&context, timeout] { stopHost(context.device(), Seconds(*timeout)); });
  addTimeout(stop, *timeout);
  auto options = std::make_shared<AdvanceOptions>();
  auto* move =
      addCommand(lumora, context, "advance", "advance the clock of `lumora run --clock manual`",
                 [&context, options] { advance(context.device(), *options); });
  constexpr long maxAdvance = 1'000'000;
  move->add_option("SECONDS", options->seconds, "time to advance by")
      ->required()
      ->check(numberUpTo(maxAdvance));
  addTimeout(move, options->timeout);
}

}  // namespace tool
