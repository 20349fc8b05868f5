#include "tool/commands/host_commands.h"

#include <memory>
#include <thread>

#include "command_line/failure.h"
#include "host/control/control_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"

namespace tool {

using command_line::Failure;

namespace {

struct AdvanceOptions {
  double seconds = 0;
  double timeout = usualTimeout.count();
};

void awaitHost(const DeviceFolder& device, Seconds timeout) {
  constexpr std::chrono::milliseconds pause{20};
  const TimeLimit limit(timeout);
  while (!HostConnection::find(device, limit.left())) {
    if (limit.isOver()) HostConnection::require(device, limit.left());
    std::this_thread::sleep_for(pause);
  }
}

void stopHost(const DeviceFolder& device, Seconds timeout) {
  const TimeLimit limit(timeout);
  HostConnection::require(device, limit.left())->call(host::service::method::stop, limit.left());
  FileLock lock(device, FileLock::host);
  if (!lock.take(limit.left())) {
    throw Failure("the home screen is still running after the timeout");
  }
}

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
