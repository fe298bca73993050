// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>

#include "platform/MainExecutor.h"

namespace pillora {

/// The main queue of a Qt program: jobs run from its event loop, on the thread that made this. Those that have not run
/// when it goes are dropped.
class QtMainExecutor final : public MainExecutor {
 public:
  void post(std::function<void()> job) override {
    QMetaObject::invokeMethod(&receiver_, std::move(job), Qt::QueuedConnection);
  }

 private:
  QObject receiver_;
};

}  // namespace pillora
