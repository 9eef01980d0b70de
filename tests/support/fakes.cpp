// SPDX-License-Identifier: MIT
#include "tests/support/fakes.h"

#include <utility>

namespace zentorin::test {

QCoro::Task<MessageBox::Answer> RecordingMessageBoxes::Ask(MessageBox box) {
  MessageBox::Answer answer = box.defaultAnswer;
  boxes.push_back(std::move(box));
  if (!answers.empty()) {
    answer = answers.front();
    answers.erase(answers.begin());
  }
  co_return answer;
}

QStringList RecordingMessageBoxes::Texts() const {
  QStringList texts;
  for (const MessageBox& box : boxes) texts.append(box.title + QLatin1Char('|') + box.text);
  return texts;
}

void RecordingOpener::OpenWithDefaultHandler(const QString& target) {
  opened.append("default:" + target);
}

void RecordingOpener::OpenFolder(const QString& path) {
  opened.append("folder:" + path);
}

void RecordingOpener::ShowText(const QString& text, const QString& title) {
  opened.append("text:" + title + QLatin1Char(':') + text);
}

void RecordingOpener::PlayOrView(const QString& target) {
  opened.append("play:" + target);
}

void RecordingOpener::OpenWith(const QString& applicationName, const QString& target) {
  opened.append(QStringLiteral("with:%1:%2").arg(applicationName, target));
}

QCoro::Task<int> FakeStreamCapture::Capture(const DownloadContext& /*context*/, QString url,
                                            QString path) {
  captured.append(url + " -> " + path);
  if (during) during(path);
  co_return result;
}

QCoro::Task<PowerOutcome> RecordingPowerControl::Perform(QString action) {
  performed.append(action);
  PowerOutcome outcome;
  outcome.done = refusal.isEmpty();
  outcome.text = refusal;
  co_return outcome;
}

std::unique_ptr<SleepHold> RecordingPowerControl::KeepAwake() {
  class Hold : public SleepHold {
   public:
    explicit Hold(int& count) : count_(count) { ++count_; }
    ~Hold() override { --count_; }

   private:
    int& count_;
  };
  return std::make_unique<Hold>(holds);
}

}  // namespace zentorin::test
