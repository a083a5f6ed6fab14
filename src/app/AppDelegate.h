#pragma once

#include "mainwindow/MainWindowController.h"

#include <memory>

/// What the application does at its start. Owns the main window's controller for the whole run.
class AppDelegate {
  public:
    /// Shows the main window. To be called once, when the event loop has begun.
    void applicationDidFinishLaunching();

  private:
    std::unique_ptr<MainWindowController> _windowController;
};
