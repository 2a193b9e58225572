// A job with a printing side of its own: a record, states and a page state as the tests want them, answered to the
// driver's escapes, and as much of an honest memory as a job needs (lists sent, tabs done, recipients taken, a fax
// given up). Messages are answered by `answer` and noted.
#pragma once

#include "driver_fixture.h"
#include "entry/exports.h"
#include "escapes/escape_blocks.h"
#include "escapes/send_escape.h"
#include "platform/api/document_events.h"
#include "platform/api/message_box.h"
#include "recording_canvas.h"
#include "settings/defaults.h"

namespace heron::test {

class NotingDesk : public platform::MessageDesk {
 public:
  NotingDesk() { platform::InstallMessageDesk(this); }
  ~NotingDesk() override { platform::InstallMessageDesk(nullptr); }
  int Show(platform::HWND, std::u16string_view text, std::u16string_view caption, platform::DWORD flags) override {
    shown = platform::ToUtf8(caption) + ": " + platform::ToUtf8(text);
    style = flags;
    ++count;
    return answer;
  }

  bool MayShowSecrets() const override { return is_window; }

  bool is_window = true;
  int answer = platform::IDOK;
  std::string shown;
  platform::DWORD style = 0;
  int count = 0;
};

class JobTest : public DriverTest {
 protected:
  JobTest() : jobState(JobStateBlock::kSize), faxStatus(FaxStatus::kSize), pageState(PageState488::kSize) {
    BuildDefaultEnv(resources.get(), &record, u"P1", printer.get());
    for (const uint32_t id : {21006u, 29510u, 29511u, 29521u, 29522u, 29546u, 32001u, 32002u, 32003u, 32005u, 32008u,
                              32009u, 32011u, 32012u, 32013u, 32014u, 32015u, 32017u, 32028u, 32029u, 32030u}) {
      Text(id) = u"<" + platform::FromUtf8(std::to_string(id)) + u">";
    }
    for (const uint32_t id : {29521u, 29522u}) Text(id) += u"%s";
    Text(32004) = u"<at %d-%02d-%02d %d:%02d>";
    Text(32006) = u"<to %s>";
    Text(32007) = u"<to %s, %d>";
    canvas.replies["EscGetPageNumber"].result = 0;
    canvas.on_escape = [this](const std::string& name, std::span<const uint8_t> in) { return Answer(name, in); };
  }

  std::u16string& Text(uint32_t id) { return backend.modules[kResourceModule][id]; }

  /// Path 556 instead of 488.
  void UsePath556() {
    canvas.replies["EscGetDrawPath"] = {.result = 1, .bytes = {1, 0, 0, 0}};
    pageState.assign(PageState556::kSize, 0);
  }

  /// One event with its escapes, without "Esc", joined by blanks; the result in front unless it is 1.
  std::string Run(int event, const void* in = nullptr, uint32_t in_size = 0, const void* out = nullptr,
                  uint32_t out_size = 0) {
    Serve();
    canvas.log.clear();
    result = DrvDocumentEvent(printer.get(), canvas.hdc, event, in_size, const_cast<void*>(in), out_size,
                              const_cast<void*>(out));
    std::string text = result == 1 ? "" : std::to_string(result) + ":";
    for (const std::string& line : canvas.log) {
      if (!text.empty()) text += ' ';
      text += line.starts_with("Esc") ? line.substr(3) : line;
    }
    return text;
  }

  DriverEnv record;
  std::vector<uint8_t> jobState;
  std::vector<uint8_t> faxStatus;
  std::vector<uint8_t> pageState;
  NotingDesk desk;
  RecordingCanvas canvas;
  int result = 0;

 private:
  void Serve() {
    auto& block = canvas.replies["EscGetJobRecord"].bytes;
    block.assign(JobRecordBlock::kSize, 0);
    constexpr uint16_t kExtra = JobRecordBlock::kEnvBase + JobRecordBlock::kEnvBaseSize;
    WriteAt(std::span(block), JobRecordBlock::kExtraOffset, kExtra);
    std::memcpy(record.bytes.data() + kPublicSize, record.bytes.data(), kPublicSize);  // the mirror
    std::memcpy(block.data() + JobRecordBlock::kEnvBase, record.bytes.data() + kPublicSize, kPrivateSize);
    canvas.replies["EscGetRecordSize"].bytes = {kEnvSize & 0xFF, kEnvSize >> 8, 0, 0};
    canvas.replies["EscGetRecord"].bytes.assign(record.bytes.begin(), record.bytes.end());
    canvas.replies["EscGetJobState"].bytes = jobState;
    canvas.replies["EscGetFaxStatus"].bytes = faxStatus;
    canvas.replies["EscGetPageState"].bytes = pageState;
  }

  bool Answer(const std::string& name, std::span<const uint8_t> in) {
    if (name == "EscPageListDone") WriteAt(std::span(jobState), JobStateBlock::kPageListsSent, uint32_t{1});
    if (name == "EscTabsEnd") canvas.replies["EscTabsDone"].bytes = {1};
    if (name == "EscSetAddressData") std::copy_n(in.begin(), 4, faxStatus.begin() + FaxStatus::kRecipients);
    if (name == "EscFaxCancel") faxStatus[FaxStatus::kFaxJob] = 0;
    if (name == "EscSetFaxTime") canvas.replies["EscGetFaxTime"].bytes.assign(in.begin(), in.end());
    if (name == "EscFaxRangeEnd") faxStatus[FaxStatus::kPageDone] = 1;
    if (name == "EscSetPageState") pageState.assign(in.begin(), in.end());
    Serve();
    return false;
  }
};

}  // namespace heron::test
