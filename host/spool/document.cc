#include "spool/document.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "cli/command.h"
#include "store/store.h"

namespace heron::spool {
namespace {

namespace fs = std::filesystem;

constexpr size_t kLargestDocument = size_t{512} * 1024 * 1024;
constexpr qsizetype kPdfMarkWithin = 1024;

QByteArray ReadStandardInput(const std::string& name) {
  QByteArray bytes;
  char part[65536];
  while (std::cin.read(part, sizeof part) || std::cin.gcount() > 0) {
    bytes.append(part, static_cast<qsizetype>(std::cin.gcount()));
    if (static_cast<size_t>(bytes.size()) > kLargestDocument) FailDocument(name, "it is larger than 512 MiB");
  }
  return bytes;
}

QByteArray ReadDocument(const std::string& path, const std::string& name) {
  if (path == "-") return ReadStandardInput(name);
  std::vector<uint8_t> bytes;
  const int failed = store::ReadFileBytes(fs::absolute(path), kLargestDocument, &bytes);
  if (failed == ENOENT) throw cli::Failure(cli::kNotFound, "there is no document " + name);
  if (failed == EACCES) throw cli::Failure(cli::kNotPermitted, "you may not read the document " + name);
  if (failed != 0) FailDocument(name, std::strerror(failed));
  return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

}  // namespace

void FailDocument(const std::string& name, const std::string& why) {
  throw cli::Failure(cli::kFailed, "the document " + name + " can't be read: " + why);
}

std::unique_ptr<Document> LoadDocument(const std::string& path, const PageSpace& space) {
  const std::string name = path == "-" ? "on standard input" : '"' + cli::Printable(path) + '"';
  const QByteArray bytes = ReadDocument(path, name);
  if (bytes.startsWith("\x89PNG\r\n")) return LoadPicture(bytes, "png", name, space);
  if (bytes.startsWith("\xFF\xD8\xFF")) return LoadPicture(bytes, "jpeg", name, space);
  if (bytes.left(kPdfMarkWithin).contains("%PDF-")) return LoadPdf(bytes, name, space);
  return LoadText(bytes, name, space);
}

}  // namespace heron::spool
