// `heron catalog`: what the printer model offers, feature by feature, with the defaults of a destination.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cctype>
#include <iostream>
#include <memory>
#include <optional>

#include "common/command.h"
#include "labels.h"
#include "platform/api/text.h"

namespace heron::cli {
namespace {

struct CatalogOptions {
  std::string feature;
  std::optional<uint32_t> country;
  bool json = false;
};

std::string NameOf(uint16_t feature) {
  return platform::ToUtf8(FeatureName(feature));
}

const char* KindText(FeatureKind kind) {
  constexpr const char* kTexts[] = {"none", "list", "none", "range", "text", "bounded text"};
  return kTexts[static_cast<size_t>(kind)];
}

bool IsText(FeatureKind kind) {
  return kind == FeatureKind::kText || kind == FeatureKind::kBoundedText;
}

std::vector<uint16_t> AllFeatures() {
  std::vector<uint16_t> features;
  for (uint16_t feature = 0; feature < kFeatureLimit; ++feature) {
    if (KindOf(feature) != FeatureKind::kNone) features.push_back(feature);
  }
  return features;
}

/// A number of a range or a text: ranges are signed 16-bit, a text's bounds come back as they are.
int64_t Bound(const Catalogue& catalogue, uint16_t feature, Selector selector) {
  const uint32_t value = CatalogQuery(catalogue.context(), feature, selector, nullptr, 0, 0);
  return KindOf(feature) == FeatureKind::kRange ? static_cast<int32_t>(value) : static_cast<int64_t>(value);
}

/// The destination's text of a text feature.
std::string DefaultText(const Catalogue& catalogue, uint16_t feature) {
  std::array<char16_t, 256> text{};
  CatalogQuery(catalogue.context(), feature, kDefaultLabel, text.data(), 0, sizeof text);
  return platform::ToUtf8(std::u16string(text.begin(), std::find(text.begin(), text.end(), u'\0')));
}

/// Row of a list feature that is the destination's default: the last that shares a bit, else the first.
size_t DefaultRow(const Catalogue& catalogue, std::span<const ListOption> options) {
  size_t row = 0;
  for (size_t i = 0; i < options.size(); ++i) {
    if ((options[i].defaultMask & catalogue.context()->destinationMask) != 0) row = i;
  }
  return row;
}

Json ListJson(const Catalogue& catalogue, uint16_t feature) {
  const auto options = ListOptionsOf(feature);
  const size_t chosen = DefaultRow(catalogue, options);
  Json rows = Json::array();
  for (size_t i = 0; i < options.size(); ++i) {
    rows.push_back({{"value", options[i].value},
                    {"label", catalogue.Label(feature, static_cast<uint32_t>(i))},
                    {"default", i == chosen}});
  }
  return rows;
}

Json FeatureJson(const Catalogue& catalogue, uint16_t feature) {
  const FeatureKind kind = KindOf(feature);
  Json row = {{"feature", feature}, {"name", NameOf(feature)}, {"kind", KindText(kind)}};
  if (IsText(kind)) {
    row["default"] = DefaultText(catalogue, feature);
  } else {
    row["default"] = static_cast<int32_t>(CatalogDefault(catalogue.context(), feature));
  }
  row["options"] = ListJson(catalogue, feature);
  const bool bounded = kind == FeatureKind::kRange || kind == FeatureKind::kBoundedText;
  const auto bound = [&](Selector selector) -> Json {
    const int64_t value = Bound(catalogue, feature, selector);
    return bounded && value != 0xFFFFFFFF ? Json(value) : Json(nullptr);  // all bits set: the catalogue has no bound
  };
  row["min"] = bound(kMin);
  row["max"] = bound(kMax);
  row["step"] = kind == FeatureKind::kRange ? bound(kStep) : Json(nullptr);
  return row;
}

struct Counts {
  size_t lists = 0, options = 0, ranges = 0, texts = 0;
};

Counts Count(const std::vector<uint16_t>& features) {
  Counts counts;
  for (const uint16_t feature : features) {
    counts.lists += KindOf(feature) == FeatureKind::kList;
    counts.options += ListOptionsOf(feature).size();
    counts.ranges += KindOf(feature) == FeatureKind::kRange;
    counts.texts += IsText(KindOf(feature));
  }
  return counts;
}

/// The feature's default for display.
std::string DefaultLine(const Catalogue& catalogue, uint16_t feature) {
  const FeatureKind kind = KindOf(feature);
  if (IsText(kind)) return '"' + Printable(DefaultText(catalogue, feature)) + '"';
  const auto value = static_cast<int32_t>(CatalogDefault(catalogue.context(), feature));
  if (kind == FeatureKind::kRange) {
    return std::to_string(value) + "  of " + std::to_string(Bound(catalogue, feature, kMin)) + " to " +
           std::to_string(Bound(catalogue, feature, kMax));
  }
  const auto options = ListOptionsOf(feature);
  const std::string label = catalogue.Label(feature, static_cast<uint32_t>(DefaultRow(catalogue, options)));
  return std::to_string(value) + (label.empty() ? "" : " (" + label + ")") + "  of " + std::to_string(options.size());
}

void PrintListing(const Catalogue& catalogue, const std::vector<uint16_t>& features) {
  const Counts counts = Count(features);
  std::cout << counts.lists << " lists with " << counts.options << " options, " << counts.ranges << " ranges, "
            << counts.texts << " texts\n\n"
            << Heading(Padded("Feature", 9) + Padded("Name", 26) + Padded("Kind", 14) + "Default") << '\n';
  for (const uint16_t feature : features) {
    std::cout << Padded(std::to_string(feature), 9) << Padded(Printable(FeatureName(feature)), 25) << ' '
              << Padded(KindText(KindOf(feature)), 14) << DefaultLine(catalogue, feature) << '\n';
  }
}

void PrintFeature(const Catalogue& catalogue, uint16_t feature) {
  std::cout << Heading(std::to_string(feature) + ' ' + Printable(FeatureName(feature))) << ", "
            << KindText(KindOf(feature)) << ", default " << DefaultLine(catalogue, feature) << '\n';
  const auto options = ListOptionsOf(feature);
  const size_t chosen = DefaultRow(catalogue, options);
  for (size_t i = 0; i < options.size(); ++i) {
    std::cout << (i == chosen ? "* " : "  ") << Padded(std::to_string(options[i].value), 6)
              << catalogue.Label(feature, static_cast<uint32_t>(i)) << '\n';
  }
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// By number or name; exit code 5 with the nearest names if there is none.
uint16_t FindFeature(const std::string& wanted, const std::vector<uint16_t>& features) {
  std::vector<std::string> names;
  for (const uint16_t feature : features) {
    if (wanted == std::to_string(feature) || SameName(wanted, NameOf(feature))) return feature;
    if (!NameOf(feature).empty()) names.push_back(NameOf(feature));
  }
  std::string hint = DidYouMean(wanted, names);
  if (hint.empty()) hint = "`heron catalog` lists all";
  throw Failure(kNotFound, "this model has no feature \"" + Printable(wanted) + "\"; " + hint);
}

void Catalog(const CatalogOptions& options) {
  const Catalogue catalogue(options.country ? *options.country : ReadLocaleCountry());
  std::vector<uint16_t> features = AllFeatures();
  if (!options.feature.empty()) features = {FindFeature(options.feature, features)};
  if (options.json) {
    Json rows = Json::array();
    for (const uint16_t feature : features) rows.push_back(FeatureJson(catalogue, feature));
    return PrintJson("catalog", {{"features", rows}});
  }
  options.feature.empty() ? PrintListing(catalogue, features) : PrintFeature(catalogue, features.front());
}

}  // namespace

void AddCatalogCommand(CLI::App& app) {
  const auto options = std::make_shared<CatalogOptions>();
  CLI::App* command = AddCommand(app, "catalog", "Show the features and options of the printer model");
  command->add_option("FEATURE", options->feature, "Number or name of one feature; all if left out");
  command->add_option("--country", options->country, "Defaults of this country code instead of the locale's");
  command->add_flag("--json", options->json, "Answer as JSON");
  command->callback([options] { Catalog(*options); });
}

}  // namespace heron::cli
