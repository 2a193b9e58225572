// `heron capabilities`: what an application may ask of the printer, every question by its name, through
// DrvDeviceCapabilities.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <iostream>
#include <memory>

#include "common/command.h"
#include "common/record_file.h"
#include "entry/exports.h"
#include "platform/api/text.h"
#include "settings/driver_env.h"

namespace heron::cli {
namespace {

/// What a capability writes to its output, and how many elements of it.
enum class Shape : uint8_t {
  kNothing,
  kCodes,        ///< u16, `result` of them
  kSizes,        ///< pairs of u32 in tenths of a millimetre, `result` of them
  kExtent,       ///< one such pair
  kResolutions,  ///< pairs of u32, `result` of them
  kNumbers,      ///< u32, `result` of them
  kBinNames,     ///< texts, 24 characters apart
  kPaperNames,   ///< texts, 64 characters apart
  kText,         ///< one text of at most 32 characters
};

struct Capability {
  uint16_t number;
  const char* name;
  Shape shape = Shape::kNothing;
};

// clang-format off
constexpr Capability kCapabilities[] = {
    {1, "DC_FIELDS"},
    {2, "DC_PAPERS", Shape::kCodes},
    {3, "DC_PAPERSIZE", Shape::kSizes},
    {4, "DC_MINEXTENT", Shape::kExtent},
    {5, "DC_MAXEXTENT", Shape::kExtent},
    {6, "DC_BINS", Shape::kCodes},
    {7, "DC_DUPLEX"},
    {8, "DC_SIZE"},
    {9, "DC_EXTRA"},
    {10, "DC_VERSION"},
    {11, "DC_DRIVER"},
    {12, "DC_BINNAMES", Shape::kBinNames},
    {13, "DC_ENUMRESOLUTIONS", Shape::kResolutions},
    {14, "DC_FILEDEPENDENCIES"},
    {15, "DC_TRUETYPE"},
    {16, "DC_PAPERNAMES", Shape::kPaperNames},
    {17, "DC_ORIENTATION"},
    {18, "DC_COPIES"},
    {19, "DC_BINADJUST"},
    {20, "DC_EMF_COMPLIANT"},
    {25, "DC_PERSONALITY", Shape::kText},
    {26, "DC_PRINTRATE"},
    {27, "DC_PRINTRATEUNIT"},
    {28, "DC_PRINTERMEM"},
    {29, "DC_MEDIAREADY"},
    {30, "DC_STAPLE"},
    {31, "DC_PRINTRATEPPM"},
    {32, "DC_COLORDEVICE"},
    {33, "DC_NUP", Shape::kNumbers},
};
// clang-format on

struct CapabilityOptions {
  std::string printer;
  std::string in;
  bool json = false;
};

struct Answer {
  int32_t result;
  Json output;  ///< null if nothing is written
};

size_t ElementBytes(Shape shape) {
  switch (shape) {
    case Shape::kNothing:
      return 0;
    case Shape::kCodes:
      return 2;
    case Shape::kNumbers:
      return 4;
    case Shape::kSizes:
    case Shape::kExtent:
    case Shape::kResolutions:
      return 8;
    case Shape::kBinNames:
      return 24 * sizeof(char16_t);
    case Shape::kPaperNames:
      return 64 * sizeof(char16_t);
    case Shape::kText:
      return 32 * sizeof(char16_t);
  }
  return 0;
}

template <typename T>
T ReadAt(const Bytes& bytes, size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

Json Element(Shape shape, const Bytes& bytes, size_t offset) {
  if (shape == Shape::kCodes) return ReadAt<uint16_t>(bytes, offset);
  if (shape == Shape::kNumbers) return ReadAt<uint32_t>(bytes, offset);
  if (ElementBytes(shape) == 8) return {ReadAt<uint32_t>(bytes, offset), ReadAt<uint32_t>(bytes, offset + 4)};
  std::u16string text(ElementBytes(shape) / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), bytes.data() + offset, ElementBytes(shape));
  return platform::ToUtf8(text.substr(0, text.find(u'\0')));
}

Answer Ask(Printer& printer, const Capability& capability, Bytes& input) {
  auto* record = input.empty() ? nullptr : reinterpret_cast<platform::DEVMODEW*>(input.data());
  const auto ask = [&](void* output) {
    return static_cast<int32_t>(
        DrvDeviceCapabilities(printer.handle(), printer.name(), capability.number, output, record));
  };
  // The first call only counts, as applications do it; the second writes into a buffer of that size.
  const int32_t count = ask(nullptr);
  if (capability.shape == Shape::kNothing || count < 0) return {count, nullptr};
  const bool single = capability.shape == Shape::kExtent || capability.shape == Shape::kText;
  const size_t elements = single ? 1 : static_cast<size_t>(count);
  Bytes bytes(std::max<size_t>(1, elements * ElementBytes(capability.shape)));
  const int32_t result = ask(bytes.data());
  if (single) return {result, Element(capability.shape, bytes, 0)};
  Json output = Json::array();
  // Never more than was allocated, even if another program added a paper between the two calls.
  for (size_t i = 0; i < std::min(elements, static_cast<size_t>(std::max(result, 0))); ++i) {
    output.push_back(Element(capability.shape, bytes, i * ElementBytes(capability.shape)));
  }
  return {result, output};
}

std::string SizeText(const Json& pair) {
  const auto millimetres = [](const Json& tenths) {
    const auto value = tenths.get<uint32_t>();
    return std::to_string(value / 10) + '.' + std::to_string(value % 10);
  };
  return millimetres(pair[0]) + " x " + millimetres(pair[1]) + " mm";
}

using Answers = std::vector<std::pair<Capability, Answer>>;

const Answer& AnswerTo(const Answers& answers, std::string_view name) {
  return std::find_if(answers.begin(), answers.end(), [&](const auto& row) { return row.first.name == name; })->second;
}

/// Codes with their names beside them, and a third column where there is one.
void PrintList(const char* title, const Answer& codes, const Answer& names, const Answer* sizes) {
  std::cout << '\n' << Heading(title) << " (" << codes.result << ")\n";
  for (size_t i = 0; i < codes.output.size() && i < names.output.size(); ++i) {
    const std::string name = Printable(names.output[i].get<std::string>());
    std::cout << "  " << Padded(codes.output[i].dump(), 7);
    if (sizes != nullptr && i < sizes->output.size()) {
      std::cout << Padded(name, 32) << SizeText(sizes->output[i]) << '\n';
    } else {
      std::cout << name << '\n';
    }
  }
}

std::string AnswerText(const Capability& capability, const Answer& answer) {
  if (answer.result == -1) return "not answered";
  if (answer.output.is_null()) return std::to_string(answer.result);
  if (capability.shape == Shape::kExtent) return SizeText(answer.output);
  if (capability.shape == Shape::kText) return Printable(answer.output.get<std::string>());
  std::string text;
  for (const Json& element : answer.output) {
    if (!text.empty()) text += ", ";
    text += element.is_array() ? element[0].dump() + " x " + element[1].dump() + " dpi" : element.dump();
  }
  return text;
}

void PrintAnswers(const Answers& answers) {
  for (const auto& [capability, answer] : answers) {
    const Shape shape = capability.shape;
    const bool listed =
        shape == Shape::kCodes || shape == Shape::kSizes || shape == Shape::kBinNames || shape == Shape::kPaperNames;
    if (!listed) std::cout << Padded(capability.name, 22) << AnswerText(capability, answer) << '\n';
  }
  const Answer& sizes = AnswerTo(answers, "DC_PAPERSIZE");
  PrintList("Papers", AnswerTo(answers, "DC_PAPERS"), AnswerTo(answers, "DC_PAPERNAMES"), &sizes);
  PrintList("Bins", AnswerTo(answers, "DC_BINS"), AnswerTo(answers, "DC_BINNAMES"), nullptr);
}

void Capabilities(const CapabilityOptions& options) {
  Bytes input;
  if (!options.in.empty()) input = ReadRecord(options.in);
  Printer printer(options.printer);
  Answers answers;
  for (const Capability& capability : kCapabilities) answers.emplace_back(capability, Ask(printer, capability, input));
  if (!options.json) return PrintAnswers(answers);
  Json document = Json::object();
  for (const auto& [capability, answer] : answers) {
    document[capability.name] = {{"result", answer.result}, {"output", answer.output}};
  }
  PrintJson("capabilities", document);
}

}  // namespace

void AddCapabilitiesCommand(CLI::App& app) {
  const auto options = std::make_shared<CapabilityOptions>();
  CLI::App* command = AddCommand(app, "capabilities", "Show the driver's answers to applications: papers, bins, sizes");
  command->add_option("-p,--printer", options->printer, "Printer to ask")->required()->type_name("NAME");
  command->add_option("--in", options->in, "Record to ask with (- for standard input)")->type_name("FILE");
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Capabilities(*options); });
}

}  // namespace heron::cli
