#pragma once
// A host application for tests: keeps settings in memory, records every message
// box and progress call, and installs itself for its lifetime.

#include <string>
#include <utility>
#include <vector>

#include "hy_util/platform/application.h"

namespace hytest {

class RecordingApplication : public CHU_DefaultApplication {
 public:
  struct Message {
    std::string text;
    HU_MessageKind kind;
  };

  RecordingApplication() : previous_(HU_SetApplication(this)) {}
  ~RecordingApplication() override { HU_SetApplication(previous_); }
  RecordingApplication(const RecordingApplication&) = delete;
  RecordingApplication& operator=(const RecordingApplication&) = delete;

  void ShowMessage(const std::string& text, HU_MessageKind kind) override {
    messages.push_back({text, kind});
  }
  void ProgressStart(const std::string& caption, int steps) override {
    progressCaptions.push_back(caption);
    progressSteps = steps;
  }
  void ProgressSetPos(int position) override { progressPositions.push_back(position); }
  void ProgressStop() override { ++progressStops; }

  std::vector<Message> messages;
  std::vector<std::string> progressCaptions;
  std::vector<int> progressPositions;
  int progressSteps = 0;
  int progressStops = 0;

 private:
  IHU_Application* previous_;
};

}  // namespace hytest
