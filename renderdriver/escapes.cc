// Checks, answers and logs an escape (escapes.h).

#include "renderdriver/escapes.h"

#include <algorithm>

#include "platform/api/text.h"
#include "renderdriver/blocks.h"
#include "renderdriver/escape_rules_table.h"
#include "uistate/list_stores.h"

namespace heron::renderdriver {
namespace {

/// Whether `size` bytes are what a row's column asks for.
bool SizeFits(const Job& job, int32_t column, size_t size) {
  switch (column) {
    case kSentPageList:
      return size == job.listRows * kPageListRow;
    case kPageState:
      return size == static_cast<size_t>(job.setup.path);
    case kRecord:
      return size == kEnvSize;
    case kFontMap: {
      const size_t entry = job.setup.path == DrawPath::k488 ? 184 : 180;
      return size % entry == 0 && size / entry >= 1 && size / entry <= kFontPairCount;
    }
    default:
      return size == static_cast<size_t>(column);
  }
}

/// Values that are the answer themselves.
int ValueOf(const Job& job, std::string_view name) {
  if (name == "EscGetPageNumber") return job.pages;
  if (name == "EscGetPageOrientation") return OrientationOf(job.setup.record);
  return 1;
}

/// The note that ends up in the ticket, without contents.
Json NewNote(const Job& job, std::string_view name) {
  Json note = {{"page", job.pages}};
  if (!job.event.empty()) note["event"] = job.event;
  note["escape"] = name;
  return note;
}

int Refuse(Job& job, Json note, std::string why) {
  note["refused"] = std::move(why);
  job.notes.push_back(std::move(note));
  ++job.refused;
  return 0;
}

std::string SizesText(In in, Out out) {
  return "wrong size: " + std::to_string(in.size()) + " bytes sent, " + std::to_string(out.size()) + " asked for";
}

}  // namespace

int AnswerEscape(Job& job, uint32_t code, In in, Out out) {
  const auto row = std::ranges::find(kEscapes, code, &EscapeRow::code);
  if (row == kEscapes.end()) return Refuse(job, NewNote(job, "unknown"), "no such escape: " + std::to_string(code));
  const EscapeRule& rule = kEscapeRules[static_cast<size_t>(row - kEscapes.begin())];
  Json note = NewNote(job, rule.name);
  if (!SizeFits(job, row->in, in.size()) || !SizeFits(job, row->out, out.size()))
    return Refuse(job, std::move(note), SizesText(in, out));
  if (!Has(job, rule.needs) || (job.steps & rule.bars) != 0) return Refuse(job, std::move(note), "out of order");
  // Answered into a copy: a refused escape leaves the driver's buffer and the job's steps unchanged.
  std::vector<uint8_t> answer(out.size());
  if (rule.answer != nullptr && !rule.answer(job, in, answer))
    return Refuse(job, std::move(note), "its contents can't be");
  job.steps = (job.steps & ~rule.clears) | rule.sets;
  std::ranges::copy(answer, out.begin());
  if (rule.describeIn != nullptr) note["in"] = rule.describeIn(in);
  if (rule.describeOut != nullptr) note["out"] = rule.describeOut(answer);
  const int value = ValueOf(job, rule.name);
  // Only escapes without data answer by their result; for all others it is always 1.
  if (row->in == 0 && row->out == 0) note["result"] = value;
  job.notes.push_back(std::move(note));
  return value;
}

void NoteDrawing(Job& job, std::u16string_view text) {
  Json note = {{"page", job.pages}};
  if (!job.event.empty()) note["event"] = job.event;
  note["draws"] = platform::ToUtf8(text);
  job.notes.push_back(std::move(note));
}

}  // namespace heron::renderdriver
