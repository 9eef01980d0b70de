// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QStringList>
#include <functional>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/message_boxes.h"
#include "download/stream_capture.h"
#include "launch/opener.h"
#include "power/power_control.h"

namespace zentorin::test {

// Keeps every box and answers from a queue, then with each box's default answer.
class RecordingMessageBoxes : public MessageBoxes {
 public:
  QCoro::Task<MessageBox::Answer> Ask(MessageBox box) override {
    MessageBox::Answer answer = box.defaultAnswer;
    boxes.push_back(std::move(box));
    if (!answers.empty()) {
      answer = answers.front();
      answers.erase(answers.begin());
    }
    co_return answer;
  }

  // "title|text" of each box in order, line breaks as in the box.
  QStringList Texts() const {
    QStringList texts;
    for (const MessageBox& box : boxes) texts.append(box.title + u'|' + box.text);
    return texts;
  }

  std::vector<MessageBox> boxes;
  std::vector<MessageBox::Answer> answers;  // taken from the front
};

// Keeps what it was asked to open, as "default:target", "folder:path", "text:title:text",
// "play:target" and "with:application:target".
class RecordingOpener : public Opener {
 public:
  void OpenWithDefaultHandler(const QString& target) override { Keep({"default", target}); }
  void OpenFolder(const QString& path) override { Keep({"folder", path}); }
  void ShowText(const QString& text, const QString& title) override { Keep({"text", title, text}); }
  void PlayOrView(const QString& target) override { Keep({"play", target}); }
  void OpenWith(const QString& applicationName, const QString& target) override {
    Keep({"with", applicationName, target});
  }

  QStringList opened;

 private:
  void Keep(const QStringList& parts) { opened.append(parts.join(u':')); }
};

// Keeps the streams it was asked for, as "address -> path", and answers `result`. `during` runs in
// the middle of each capture, where a test may write the file or press cancel.
class FakeStreamCapture : public StreamCapture {
 public:
  void FindTool() override { ++lookUps; }
  QCoro::Task<StreamOutcome> Capture(StreamRequest request, Activity& /*activity*/,
                                     CancelToken /*cancel*/) override {
    captured.append(request.address + " -> " + request.path);
    if (during) during(request.path);
    // A copy: a returned member would be moved away.
    co_return StreamOutcome(result);
  }

  StreamOutcome result;
  std::function<void(const QString& path)> during;
  int lookUps = 0;
  QStringList captured;
};

// Keeps the actions and answers `refusal` to each; counts the holds that live.
class RecordingPowerControl : public PowerControl {
 public:
  QCoro::Task<PowerOutcome> Perform(QString action, CancelToken /*cancel*/) override {
    performed.append(action);
    PowerOutcome outcome;
    outcome.done = refusal.isEmpty();
    outcome.text = refusal;
    co_return outcome;
  }
  std::unique_ptr<SleepHold> KeepAwake() override { return std::make_unique<Hold>(holds); }

  QString refusal;
  QStringList performed;
  int holds = 0;

 private:
  class Hold : public SleepHold {
   public:
    explicit Hold(int& count) : count_(count) { ++count_; }
    ~Hold() override { --count_; }

   private:
    int& count_;
  };
};

// Stands still at `now` until a test moves it.
class SettableClock : public Clock {
 public:
  QDateTime LocalNow() const override { return now; }

  QDateTime now{{2024, 5, 1}, {23, 30, 5}, Qt::UTC};
};

}  // namespace zentorin::test
