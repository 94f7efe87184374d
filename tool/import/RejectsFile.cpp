#include "tool/import/RejectsFile.h"

#include "common/Error.h"

namespace ktrv::tool {

void RejectsFile::Add(StringView head, StringView raw) {
  if (path_.empty()) return;
  if (!file_.is_open()) {
    file_.open(path_, std::ios::binary);
    file_ << "\xEF\xBB\xBF" << ToUtf8(head);
  }
  file_ << ToUtf8(raw) << (raw.ends_with(u'\n') ? "" : "\r\n");
  Check();
}

void RejectsFile::Close() {
  if (!file_.is_open()) return;
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
