#pragma once

#include <vector>

#include "services/BackgroundList.h"
#include "services/Services.h"

namespace ktrv::forms {

/// The values that contacts have in one column, to complete what is typed. Read once, in the
/// background. A failure is logged, and nothing is completed.
class StoredValues final : public BackgroundList {
 public:
  /// The most values that are kept; the query gives the most used first.
  static constexpr std::size_t kMost = 10000;

  /// Services and database must outlive the object. \param query one column
  StoredValues(Services& services, BookDatabase& database, StringView query)
      : BackgroundList(database), services_(services), query_(query) {}
  ~StoredValues() override { Cancel(); }

  /// The most used value that starts with the text, letter for letter; empty if there is none, if
  /// the text is a value itself or a single letter, and before the values are there. The first call
  /// starts to read them. \param longest UTF-16 units that a value may have
  String Completing(StringView typed, int longest);

 private:
  void Start();
  void FetchProgress(std::int64_t rows) override;
  void FetchComplete(const Error* error) override;

  Services& services_;
  const String query_;
  bool started_ = false;
  std::int64_t taken_ = 0;  ///< rows of which the values were taken
  std::vector<String> values_;
};

}  // namespace ktrv::forms
