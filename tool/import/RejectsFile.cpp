#include "tool/import/RejectsFile.h"

#include "common/Error.h"

namespace ktrv::tool {

void RejectsFile::Open(StringView head) {
  if (path_.empty()) return;
  file_.open(path_, std::ios::binary);
  file_ << "\xEF\xBB\xBF" << ToUtf8(head) << std::flush;
  Check();
}

RejectsFile::~RejectsFile() {
  if (!file_.is_open() || hasRows_) return;
  file_.close();
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

void RejectsFile::Add(StringView raw) {
  if (path_.empty()) return;
  hasRows_ = true;
  file_ << ToUtf8(raw) << (raw.ends_with(u'\n') ? "" : "\r\n");
  Check();
}

void RejectsFile::Close() {
  if (!hasRows_) return;
  file_.close();
  Check();
}

void RejectsFile::Check() const {
  if (file_) return;
  throw Error(ErrorNumber::DriverFailure,
              u"The file of rejects cannot be written: " + path_.u16string());
}

std::filesystem::path RejectsFile::PathBeside(const std::filesystem::path& file) {
  for (int count = 1;; ++count) {
    std::filesystem::path path = file;
    path.replace_extension();
    path += count == 1 ? ".rejects" : ".rejects-" + std::to_string(count);
    path += file.extension();
    if (!std::filesystem::exists(path)) return path;
  }
}

}  // namespace ktrv::tool
