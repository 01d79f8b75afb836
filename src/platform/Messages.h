// Windows and messages of the thread that runs the module: registered messages, hidden windows,
// one-shot timers, pumping.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "quillmar/Conventions.h"

namespace quillmar::platform {

// Number of a registered message; the same name gives the same number in every process.
unsigned RegisterMessage(const std::string& name);

// Receives what a hidden window is told. Called on the thread that made the window, from its
// message loop; may be entered again while it runs.
class WindowHandler {
 public:
  virtual ~WindowHandler() = default;
  virtual void OnMessage(unsigned message) = 0;  // a registered message
  virtual void OnShown() = 0;                    // somebody showed the window
  virtual void OnCommand(int /*command*/) {}     // the user chose a command of the window
};

// A hidden modeless dialog made from a dialog template of `resources`; its parent is the desktop.
// Destroyed with the object.
class HiddenWindow {
 public:
  virtual ~HiddenWindow() = default;
  virtual QmWindow Handle() const = 0;
  virtual void Show(bool visible) = 0;
  // Whether the user can choose the command of that number, a control of the template. Without
  // such a control nothing happens.
  virtual void EnableCommand(int command, bool enabled) = 0;
  // Closes nothing and forgets the window: for a process that is ending.
  virtual void Abandon() = 0;

  // Null when the window could not be made. The handler must outlive the window.
  static std::unique_ptr<HiddenWindow> Create(QmModule resources, int dialogTemplate,
                                              WindowHandler& handler);
};

bool PostToWindow(QmWindow window, unsigned message);
// Waits until the window has handled the message, but not for a window that hangs.
void SendToWindow(QmWindow window, unsigned message);
bool IsLiveWindow(QmWindow window);
void BringToForeground(QmWindow window);

// Calls `expired` once with the timer's identifier when the time is over, from the message loop
// of this thread. 0 when no timer could be made.
std::uintptr_t StartTimer(std::chrono::milliseconds delay,
                          std::function<void(std::uintptr_t)> expired);
void StopTimer(std::uintptr_t timer);

// Removes and dispatches every message that is queued for this thread now.
void PumpMessages();

}  // namespace quillmar::platform
