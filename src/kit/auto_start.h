// Starting the application when the user logs in, by a helper that the platform starts. The
// platform alone knows whether that is on: nothing is stored, every question is asked anew.
//
// Main thread. Made once by the application, which keeps it; the login items outlive it. A change
// that the platform refuses is announced all the same; the next question tells the truth.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "platform/login_items.h"
#include "platform/view_tree.h"
#include "reactive/subject.h"

namespace kelvane {

class AutoStart {
 public:
  // What views hold.
  class Observable {
   public:
    explicit Observable(AutoStart& autoStart) : autoStart_(autoStart) {}
    bool isEnabled() const { return autoStart_.isEnabled(); }
    void setEnabled(bool isEnabled) { autoStart_.setEnabled(isEnabled); }
    Publisher<std::monostate> objectWillChange() { return willChange_.publisher(); }

   private:
    friend AutoStart;
    AutoStart& autoStart_;
    PassthroughSubject<std::monostate> willChange_;
  };

  // For whoever observes one property: it is told before and after each change, and reads.
  class KVO {
   public:
    struct Notice {
      bool isPrior = false;
    };
    explicit KVO(AutoStart& autoStart) : autoStart_(autoStart) {}
    bool isEnabled() const { return autoStart_.isEnabled(); }
    void setEnabled(bool isEnabled) { autoStart_.setEnabled(isEnabled); }
    Publisher<Notice> notices() { return notices_.publisher(); }

   private:
    friend AutoStart;
    AutoStart& autoStart_;
    PassthroughSubject<Notice> notices_;
  };

  // The switch in the settings. What it shows is read when it is asked.
  class Toggle {
   public:
    explicit Toggle(Observable& observable, std::string label = "Launch at login");
    const std::string& label() const { return label_; }
    bool isOn() const { return observable_.isEnabled(); }
    void setOn(bool isOn) { observable_.setEnabled(isOn); }
    // The node of that id; a click sends the id back as the action.
    ViewNode view(const std::string& id) const;

   private:
    Observable& observable_;
    std::string label_;
  };

  // An application without an identifier is a fatal error.
  AutoStart(LoginItems& loginItems, const std::string& applicationIdentifier);
  AutoStart(const AutoStart&) = delete;
  AutoStart& operator=(const AutoStart&) = delete;

  // The helper's identifier is the application's with "-AutoStartHelper" after it; it is the label
  // of the platform's job.
  const std::string& helperIdentifier() const { return helperIdentifier_; }

  // True exactly when the first job with the helper's label is there on demand.
  bool isEnabled() const;
  // Observers of all kinds are told also when nothing changes.
  void setEnabled(bool isEnabled);

  // Each subscriber gets the latest value first: what was set last, or what was so when the
  // publisher was first used.
  Publisher<bool> publisher() { return changes().publisher(); }
  Observable& observable() { return observable_; }
  KVO& kvo() { return kvo_; }

 private:
  CurrentValueSubject<bool>& changes();

  LoginItems& loginItems_;
  const std::string helperIdentifier_;
  std::optional<CurrentValueSubject<bool>> changes_;  // from the first use on
  Observable observable_{*this};
  KVO kvo_{*this};
};

}  // namespace kelvane
