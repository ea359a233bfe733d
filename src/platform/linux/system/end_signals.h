#pragma once

#include "platform/linux/system/file_descriptor.h"

namespace karvel {

/// SIGTERM, SIGINT and SIGHUP as events that a message loop can wait for, instead of ending the
/// process on the spot; SIGPIPE and SIGXFSZ as nothing but a failed write. A signal that whoever
/// started the program has it ignore, as nohup does, stays ignored.
class EndSignals {
 public:
  EndSignals();
  /// Readable while a signal waits.
  [[nodiscard]] int descriptor() const { return descriptor_.get(); }
  /// True when a signal has arrived since the last call.
  bool take();

 private:
  FileDescriptor descriptor_;
};

/// The process has one set of signals. The first call takes their ordinary effect away: make it
/// before any thread is started.
EndSignals& endSignals();

}  // namespace karvel
