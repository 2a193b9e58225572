// Detects the type of a document and opens it (document.h).

#include "document.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "common/command.h"
#include "interrupt.h"
#include "platform/sqlite/store.h"

namespace heron::spool {
namespace {

namespace fs = std::filesystem;

constexpr qsizetype kMebibyte = 1024 * 1024;
constexpr size_t kLargestDocument = size_t{512} * kMebibyte;
constexpr size_t kReadAtOnce = 65536;
constexpr qsizetype kPdfMarkWithin = 1024;

QByteArray ReadStandardInput(const std::string& name, Progress& progress) {
  QByteArray bytes;
  std::vector<char> part(kReadAtOnce);
  while (true) {
    // Not through a stream, which would wait on after an interrupt.
    const ssize_t count = read(STDIN_FILENO, part.data(), part.size());
    EndIfInterrupted();
    if (count == 0) return bytes;
    if (count < 0 && errno != EINTR) FailDocument(name, std::strerror(errno));
    bytes.append(part.data(), std::max<ssize_t>(count, 0));
    if (static_cast<size_t>(bytes.size()) > kLargestDocument) FailDocument(name, "it is larger than 512 MiB");
    progress.Show("Reading the document: " + std::to_string(bytes.size() / kMebibyte) + " MiB");
  }
}

QByteArray ReadDocument(const std::string& path, const std::string& name, Progress& progress) {
  if (path == "-") return ReadStandardInput(name, progress);
  std::vector<uint8_t> bytes;
  const int failed = store::ReadFileBytes(fs::absolute(path), kLargestDocument, &bytes);
  if (failed == ENOENT) throw cli::Failure(cli::kNotFound, "there is no document " + name);
  if (failed == EACCES) throw cli::Failure(cli::kNotPermitted, "permission denied to read the document " + name);
  if (failed != 0) FailDocument(name, std::strerror(failed));
  return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

}  // namespace

void FailDocument(const std::string& name, const std::string& why) {
  throw cli::Failure(cli::kFailed, "the document " + name + " can't be read: " + why);
}

std::string DocumentName(const std::string& path) {
  return path == "-" ? "on standard input" : '"' + cli::Printable(path) + '"';
}

std::unique_ptr<Document> LoadDocument(const std::string& path, const PageSpace& space, Progress& progress) {
  const std::string name = DocumentName(path);
  const QByteArray bytes = ReadDocument(path, name, progress);
  if (bytes.startsWith("\x89PNG\r\n")) return LoadPicture(bytes, "png", name, space);
  if (bytes.startsWith("\xFF\xD8\xFF")) return LoadPicture(bytes, "jpeg", name, space);
  if (bytes.left(kPdfMarkWithin).contains("%PDF-")) return LoadPdf(bytes, name, space);
  return LoadText(bytes, name, space);
}

}  // namespace heron::spool
