#pragma once

#include <array>
#include <cstdio>
#include <filesystem>

#include "common/Text.h"

namespace ktrv::tests {

enum class PairKind { Galera, PostgreSql };

/// Two servers that hold the same data. They end with this.
class Pair {
 public:
  /// \throws std::runtime_error
  explicit Pair(PairKind kind);
  ~Pair();
  Pair(const Pair&) = delete;
  Pair& operator=(const Pair&) = delete;

  /// Names both servers, the first one first.
  String ConnectionString(StringView database) const;
  /// Names the second server only.
  String ConnectionStringOfSecond(StringView database) const;

  /// Ends the first server at once, as a loss of power does, and lets the second one take over.
  void LoseFirst();

 private:
  String ConnectionString(StringView servers, StringView ports, StringView database) const;

  PairKind kind_;
  std::filesystem::path folder_;
  std::FILE* script_ = nullptr;
  int scriptId_ = 0;
  std::array<int, 2> ports_{};
};

}  // namespace ktrv::tests
