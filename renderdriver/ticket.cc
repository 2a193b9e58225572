// Writes job.json (ticket.h).

#include "renderdriver/ticket.h"

#include <array>
#include <cstdio>

#include "platform/api/text.h"
#include "renderdriver/answers.h"
#include "renderdriver/blocks.h"

namespace heron::renderdriver {
namespace {

Json Settings(const DriverEnv& record) {
  Json settings = Json::object();
  for (const EnvField& field : kEnvFields) {
    // The mirror repeats the public part; reserved bytes have no meaning.
    if (field.name == "reserved" || field.name == "publicMirror") continue;
    settings[std::string(field.name)] = record::FieldJson(record.bytes, field);
  }
  return settings;
}

Json Paper(const DriverEnv& record) {
  const Sheet sheet = *SheetOf(record);
  return {{"dmPaperSize", Get<"dmPaperSize">(record)},
          {"dpi", sheet.dpi},
          {"widthDots", sheet.width},
          {"heightDots", sheet.height},
          {"orientation", OrientationOf(record) == 2 ? "landscape" : "portrait"}};
}

Json Text(const char (&field)[44]) {
  return platform::ToUtf8(RecipientText(field));
}

Json Recipients(const Job& job) {
  Json recipients = Json::array();
  for (uint32_t i = 0; i < RecipientCount(job); ++i) {
    const AddressRow& row = job.addresses->rows[i];
    recipients.push_back({{"name", Text(row.name)},
                          {"number", Text(row.number)},
                          {"company", Text(row.company)},
                          {"department", Text(row.department)},
                          {"ecm", row.ecm != 0},
                          {"overseas", row.overseas != 0},
                          {"v34", row.v34 != 0}});
  }
  return recipients;
}

/// Each with its pages in the fax's file, from 0.
Json Transmissions(const Job& job) {
  Json transmissions = Json::array();
  int page = 0;
  for (const Transmission& sent : TransmissionsOf(job)) {
    const int pages = sent.covers + job.pages;
    transmissions.push_back(
        {{"first", sent.first}, {"end", sent.end}, {"covers", sent.covers}, {"page", page}, {"pages", pages}});
    page += pages;
  }
  return transmissions;
}

Json Time(const Job& job) {
  const FaxTime& time = job.faxTime;
  if (time.year == 0) return nullptr;  // at once
  std::array<char, 40> text;
  std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u", time.year, time.month, time.day, time.hour,
                time.minute);
  return text.data();
}

Json Fax(const Job& job, const std::string& file) {
  if (!Has(job, kFaxJob)) return nullptr;
  const DriverEnv& record = job.setup.record;
  const auto if_on = [](bool on, std::u16string_view text) {
    return on ? Json(platform::ToUtf8(text)) : Json(nullptr);
  };
  return {{"file", file.empty() ? Json(nullptr) : Json(file)},
          {"recipients", Recipients(job)},
          {"first", job.rangeFirst},
          {"end", job.rangeEnd},
          {"transmissions", Transmissions(job)},
          {"time", Time(job)},
          {"subAddress", if_on(Get<"SubAddress">(record) == 1, GetText<"szSubAddress">(record))},
          {"senderId", if_on(Get<"SenderID">(record) == 1, GetText<"szSenderID">(record))},
          {"resolution", Get<"lpQuality">(record)},
          {"printedToo", Get<"filePrintFlag">(record) == 1}};
}

Json FontMap(const Job& job) {
  const auto rows = FontMapRows(job.setup.path, job.fontMap);
  Json map = Json::array();
  if (!rows) return map;  // none was sent
  for (const FontMapRow& row : *rows) map.push_back({{"trueType", row.trueType}, {"printer", row.variants}});
  return map;
}

Json FileJson(const std::string& file) {
  return file.empty() ? Json(nullptr) : Json(file);
}

Json Overlay(const Job& job, const TicketFiles& files) {
  if (job.form.mode == 1) return nullptr;
  return {{"mode", job.form.mode},
          {"path", platform::ToUtf8(job.form.path)},
          {"file", FileJson(files.overlay)},
          {"merged", files.isMerged}};
}

std::string OneLine(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Each member on a line of its own; an object's or a list's members too, so that a person can read down the page.
std::string Laid(const Json& ticket) {
  std::string text;
  for (const auto& [key, value] : ticket.items()) {
    text += (text.empty() ? "{\n  " : ",\n  ") + Json(key).dump() + ": ";
    if (!value.is_structured() || value.empty()) {
      text += OneLine(value);
      continue;
    }
    std::string lines;
    for (const auto& [name, member] : value.items()) {
      lines += lines.empty() ? "\n    " : ",\n    ";
      if (value.is_object()) lines += Json(name).dump() + ": ";
      lines += OneLine(member);
    }
    text += value.is_object() ? '{' + lines + "\n  }" : '[' + lines + "\n  ]";
  }
  return text + "\n}\n";
}

}  // namespace

std::string Ticket(const Job& job, const TicketFiles& files) {
  return Laid({{"schema", "heron.job"},
               {"version", 1},
               {"printer", platform::ToUtf8(job.setup.printer)},
               {"user", platform::ToUtf8(job.user)},
               {"document", platform::ToUtf8(job.document)},
               {"jobId", platform::ToUtf8(job.id)},
               {"pages", job.pages},
               {"pagesFile", FileJson(files.pages)},
               {"path", static_cast<int>(job.setup.path)},
               {"paper", Paper(job.setup.record)},
               {"overlay", Overlay(job, files)},
               {"fax", Fax(job, files.fax)},
               {"fontMap", FontMap(job)},
               {"refused", job.refused},
               {"settings", Settings(job.setup.record)},
               {"escapes", job.notes}});
}

}  // namespace heron::renderdriver
