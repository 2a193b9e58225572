#include "form_text.h"

#include <iostream>

#include "catalog/strings.h"
#include "platform/api/text.h"

namespace heron::cli {

std::string FormMessage(TextNumber text, const std::u16string& path) {
  const StringsInUse strings;
  std::string line = PrintableLines(platform::ExpandText(GetUiString(text), {std::u16string_view(path)}));
  for (size_t at; (at = line.find('\n')) != std::string::npos;)
    line.replace(at, line.find_first_not_of('\n', at) - at, " ");
  return line;
}

std::string FormTimeIso(const platform::SYSTEMTIME& time) {
  return Printable(platform::ExpandText(u"%04d-%02d-%02dT%02d:%02d:%02d",
                                        {int64_t{time.wYear}, int64_t{time.wMonth}, int64_t{time.wDay},
                                         int64_t{time.wHour}, int64_t{time.wMinute}, int64_t{time.wSecond}}));
}

const char* FormState(const UiState& ui, const std::u16string& path, bool there) {
  if (!there) return "the file is gone";
  switch (FormCheck(ui, path)) {
    case FormFit::kFits:
      return "fits";
    case FormFit::kColorInMonochrome:
      return "made in color, the job is monochrome";
    case FormFit::kNone:
      break;
  }
  return "doesn't fit this printer and these settings";
}

Json FormRowsJson(const FormCheckTable& table) {
  Json rows = Json::array();
  for (size_t i = 0; i < kFormRowNames.size(); ++i) {
    rows.push_back({{"name", platform::ToUtf8(kFormRowNames[i])},
                    {"expected", platform::ToUtf8(table.expected[i])},
                    {"value", platform::ToUtf8(table.file[i])},
                    {"compared", IsFormRowCompared(i)}});
  }
  return rows;
}

void PrintFormRows(const FormCheckTable& table) {
  constexpr size_t kNameWidth = 14, kTextWidth = 34;
  for (size_t i = 0; i < kFormRowNames.size(); ++i) {
    std::cout << "  " << Padded(Printable(kFormRowNames[i]), kNameWidth) << Padded(Printable(table.file[i]), kTextWidth)
              << "expected " << Printable(table.expected[i]) << (IsFormRowCompared(i) ? "\n" : ", not compared\n");
  }
}

}  // namespace heron::cli
