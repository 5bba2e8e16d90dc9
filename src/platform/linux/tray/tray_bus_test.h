// For tests of the tray on a bus of their own: other programs on it, calls to them, and a menu that
// a test scripts.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {

class PrivateBusTest : public testing::Test {
 protected:
  ~PrivateBusTest() override { runUntilIdle(); }

  BusPtr connect() const { return bus_.connect(); }

  // Another program: calls, and waits for the answer with the loop running.
  static BusReply call(BusConnection* connection, const BusCalls::Target& target,
                       const char* method, GVariant* arguments, const char* type = "r") {
    BusCalls calls;
    BusReply answer;
    bool isThere = false;
    calls.call(connection, target, method, arguments, type, [&](BusReply reply) {
      answer = std::move(reply);
      isThere = true;
    });
    EXPECT_TRUE(runUntil([&] { return isThere; })) << method << " was not answered";
    return answer;
  }

  // A service with canned answers, by method; a null answer is an error.
  struct Service {
    BusPtr connection;
    std::unique_ptr<ExportedObject> object;
    std::vector<std::string> calls;
  };
  std::unique_ptr<Service> serve(const std::string& name, const std::string& path,
                                 const std::string& interfaceXml,
                                 std::function<GVariant*(const ExportedObject::Call&)> answer) {
    auto service = std::make_unique<Service>();
    service->connection = connect();
    interfaces_.push_back(parseInterface("<node>" + interfaceXml + "</node>"));
    service->object = std::make_unique<ExportedObject>(
        service->connection.get(), path, *interfaces_.back(),
        ExportedObject::Handlers{[answer = std::move(answer),
                                  calls = &service->calls](const ExportedObject::Call& call) {
                                   calls->emplace_back(call.method);
                                   GVariant* value = answer(call);
                                   if (value) return call.invocation.answer(value);
                                   call.invocation.refuse(kFailed, "No");
                                 },
                                 nullptr});
    own(service->connection.get(), name);
    return service;
  }
  // 3: allow replacement, replace.
  static void own(BusConnection* connection, const std::string& name) {
    EXPECT_TRUE(askBus(connection, "RequestName", g_variant_new("(su)", name.c_str(), 3)));
  }

 private:
  const PrivateBus bus_;

 protected:
  const std::string address = bus_.address();

 private:
  std::vector<BusInterfacePtr> interfaces_;
};

// The test's process is called something else while this lives.
class ProcessName {
 public:
  explicit ProcessName(const char* name) {
    prctl(PR_GET_NAME, before_);
    prctl(PR_SET_NAME, name);
  }
  ~ProcessName() { prctl(PR_SET_NAME, before_); }
  ProcessName(const ProcessName&) = delete;
  ProcessName& operator=(const ProcessName&) = delete;

 private:
  char before_[16] = {};
};

}  // namespace kelvane
