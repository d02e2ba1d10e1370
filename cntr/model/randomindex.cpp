// SPDX-License-Identifier: MIT

#include <cntr/model/randomindex.h>

#include <memory>

#include <platform/core/random.h>
#include <platform/core/thread.h>

namespace cntr::model {

namespace {

qc_ThreadLocal& slot() {
  static qc_ThreadLocal generatorOfThread;
  return generatorOfThread;
}

void deleteGenerator(const qcThreadID&, void*) {
  void* const generator = slot().OSValue();
  if (generator == nullptr) return;
  slot().OSValue(nullptr);
  delete static_cast<qcRandomUniform*>(generator);
}

/// This thread's generator, or null when the thread is too near its end to keep one.
qcRandomUniform* generator() {
  if (void* const known = slot().OSValue()) return static_cast<qcRandomUniform*>(known);
  auto fresh = std::make_unique<qcRandomUniform>(1);
  qfGetCurrentThreadID().atexit(&deleteGenerator, nullptr);
  slot().OSValue(fresh.get());
  return slot().OSValue() == nullptr ? nullptr : fresh.release();
}

}  // namespace

std::size_t randomIndexBelow(std::size_t count) {
  qcRandomUniform* const drawn = generator();
  if (drawn == nullptr) return 0;
  return static_cast<std::size_t>(drawn->next(0.0, static_cast<double>(count)));
}

}  // namespace cntr::model
