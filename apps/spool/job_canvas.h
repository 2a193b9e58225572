// The canvas behind the device context of a job: escapes go to the printing half, drawings to the pages of a PDF.
//
// What the driver draws on a page waits until the page ends: through a stamp that it marks (EscStampBegin) the page's
// content is seen, everything else lies over it. The text of a tab sheet is no part of a page; it is in the ticket.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/api/canvas.h"
#include "renderdriver/job.h"
#include "sheet_file.h"

namespace heron::spool {

class JobCanvas : public platform::Canvas {
 public:
  /// `job` must outlive the canvas; the pages go to `pdf_path`.
  JobCanvas(renderdriver::Job& job, const std::string& pdf_path);

  const PageSpace& space() const { return space_; }
  /// What the application puts on the page that has started.
  void SetContent(std::vector<PlacedPage> content) { content_ = std::move(content); }
  /// Writes the PDF, as SheetFile::Finish does.
  bool Finish(const std::function<void(int)>& progress) { return sheets_.Finish(progress); }

  int Escape(uint32_t code, std::span<const uint8_t> in, std::span<uint8_t> out) override;
  int DeviceCap(platform::DeviceCap number) override;
  platform::SIZE MeasureText(const platform::LOGFONTW& font, std::u16string_view text) override;
  std::vector<platform::FontFamily> FontFamilies() override;
  void DrawLine(const platform::TextDrawing& drawing, const std::optional<platform::RECT>& clip) override;
  void FillRect(const platform::RECT& area, platform::COLORREF color,
                const std::optional<platform::RECT>& clip) override;
  void DrawPicture(const platform::RECT& target, const platform::Picture& picture,
                   const std::optional<platform::RECT>& clip) override;
  void DrawBitmap(const platform::RECT& target, std::span<const uint8_t> file,
                  const std::optional<platform::RECT>& clip) override;
  bool StartPage() override;
  bool EndPage() override;

 private:
  void Keep(Drawing drawing);
  bool AddCover(std::span<const Drawing> drawings);
  Drawing DeferredStamp(const renderdriver::DeferredStamp& stamp) const;

  renderdriver::Job& job_;
  PageSpace space_;
  SheetFile sheets_;
  std::vector<PlacedPage> content_;
  std::vector<Drawing> under_;
  std::vector<Drawing> over_;
  std::optional<renderdriver::CoverSheet> cover_;  ///< of the page, if it is a cover sheet on a paper of its own
  std::vector<platform::FontFamily> families_;
};

}  // namespace heron::spool
