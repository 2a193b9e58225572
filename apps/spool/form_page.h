// The page of an overlay form: taken from a job that makes one, and placed under the pages of a job that uses it.
#pragma once

#include <memory>
#include <string>

#include "document.h"
#include "job_folder.h"
#include "renderdriver/job.h"

namespace heron::spool {

/// Writes the first page of the PDF `pages` as the form that the job makes. A Failure if that can't be done; the file
/// of the form is then as it was.
void WriteForm(const renderdriver::Job& job, const std::string& pages);

/// The form that the job uses, loaded once the driver has named it.
class FormPage {
 public:
  /// Loads it if the job has one. A Failure for a form that can't be read or doesn't suit the job. A form of another
  /// printing half is kept, but not merged.
  void Load(const renderdriver::Job& job, const PageSpace& space);
  /// Whether page `number` of the job, from 1, lies on the form.
  bool IsUnder(const renderdriver::Job& job, int number) const;
  DocumentPage Page() const { return document_->Page(0); }
  bool isMerged() const { return document_ != nullptr; }

 private:
  bool loaded_ = false;
  std::unique_ptr<Document> document_;
};

}  // namespace heron::spool
