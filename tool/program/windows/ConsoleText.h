#pragma once

#include <windows.h>

#include <array>
#include <streambuf>
#include <string>

namespace ktrv::tool {

/// Writes UTF-8 to a console window as wide text, and to files and pipes unchanged. A character
/// that is cut between two writes is kept for the next one.
class OutputText final : public std::streambuf {
 public:
  explicit OutputText(DWORD standardHandle);
  ~OutputText() override { sync(); }

  bool IsConsole() const { return isConsole_; }

 protected:
  int_type overflow(int_type unit) override;
  int sync() override;

 private:
  bool Write(const char* bytes, std::size_t size) const;
  bool WriteToConsole(std::string_view text) const;

  HANDLE handle_;
  bool isConsole_ = false;
  std::array<char, 65536> buffer_{};
};

/// Reads a console window's wide text as UTF-8, and files and pipes unchanged.
class InputText final : public std::streambuf {
 public:
  InputText();

  bool IsConsole() const { return isConsole_; }

 protected:
  int_type underflow() override;

 private:
  HANDLE handle_;
  bool isConsole_ = false;
  std::string text_;
};

}  // namespace ktrv::tool
