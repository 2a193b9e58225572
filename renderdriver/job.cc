// Makes a job and its pages (job.h).

#include "renderdriver/job.h"

#include "renderdriver/blocks.h"
#include "renderdriver/bytes.h"

namespace heron::renderdriver {

std::optional<Job> OpenJob(JobSetup setup) {
  // Everything below relies on a sheet of a sensible size.
  if (!SheetOf(setup.record)) return std::nullopt;
  Job job;
  job.setup = std::move(setup);
  job.steps = kFirstPage | (job.setup.path == DrawPath::k488 ? kPath488 : kPath556);
  if (Get<"lpOutput">(job.setup.record) == kFaxOutput) job.steps |= kFaxJob;
  if (job.setup.usesSpoolFile) job.steps |= kSpoolFile;
  FillDevice(job.setup.record, job.device);
  job.pageState = NewPageState(job.setup);
  return job;
}

bool StartJobPage(Job& job) {
  if (job.pageOpen || !Has(job, kOutput)) return false;
  job.pageOpen = true;
  if (Has(job, kCoverBegun)) {  // pages of a cover sheet aren't pages of the document
    if (!job.covered.empty()) ++job.covered.back().covers;
    return true;
  }
  ++job.pages;
  job.steps &= ~uint32_t{kFirstPage};
  return true;
}

bool EndJobPage(Job& job) {
  if (!job.pageOpen) return false;
  job.pageOpen = false;
  job.masking = false;
  job.stampShade.reset();
  job.steps &= ~uint32_t{kStampOpen};
  // A stamp belongs to its page; everything else in the state belongs to the job.
  if (job.setup.path == DrawPath::k556) Write(job.pageState, PageState556::kStampText, u'\0');
  return true;
}

std::vector<Transmission> TransmissionsOf(const Job& job) {
  if (!Has(job, kFaxJob) || job.faxDropped) return {};
  if (!job.covered.empty()) return job.covered;
  return {{job.rangeFirst, job.rangeEnd, 0}};
}

std::optional<CoverSheet> CoverSheetOf(const Job& job) {
  using D = DeviceFields;
  constexpr uint8_t kOwnPaper = 3;
  const std::span<const uint8_t> device = job.device;
  const auto width = Read<uint16_t>(device, D::kOutputPaperWidth);
  const auto length = Read<uint16_t>(device, D::kOutputPaperLength);
  const auto zoom = Read<uint8_t>(device, D::kZoom);
  if (!Has(job, kCoverBegun) || Read<uint8_t>(device, D::kPaperKind) != kOwnPaper) return std::nullopt;
  if (width == 0 || length == 0 || zoom == 0) return std::nullopt;
  return CoverSheet{width, length, zoom / 100.0};
}

std::optional<DeferredStamp> StampLeftTo(const Job& job) {
  using S = PageState556;
  const std::span<const uint8_t> state = job.pageState;
  if (job.setup.path != DrawPath::k556 || Read<uint16_t>(state, S::kDrawingOrder) == 1) return std::nullopt;
  const DeferredStamp stamp{
      .text = ReadText(state, S::kStampText, kStampTextRoom),
      .font = ReadText(state, S::kStampFont, kStampFontRoom),
      .style = Read<int16_t>(state, S::kStampStyle),
      .size = Read<int16_t>(state, S::kStampSize),
      .angle = Read<int16_t>(state, S::kStampAngle),
      .shade = Read<uint8_t>(state, S::kStampIntensity),
      .centerX = Read<int32_t>(state, S::kStampCenterX),
      .centerY = Read<int32_t>(state, S::kStampCenterY),
  };
  if (stamp.text.empty() || stamp.size <= 0) return std::nullopt;
  return stamp;
}

}  // namespace heron::renderdriver
