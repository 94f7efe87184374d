#include "database/SharedLink.h"

#include <utility>

namespace ktrv::database {

PreparedStatement SharedLink::Prepare(StringView text, std::span<const Parameter> parameters) {
  statements_.push_back(link_->Prepare(text, parameters));
  return {shared_from_this(), *statements_.back()};
}

void SharedLink::Drop(const Statement* statement) {
  std::erase_if(statements_, [&](const auto& each) { return each.get() == statement; });
}

PreparedStatement::PreparedStatement(PreparedStatement&& other) noexcept
    : link_(std::move(other.link_)), statement_(std::exchange(other.statement_, nullptr)) {}

PreparedStatement& PreparedStatement::operator=(PreparedStatement&& other) noexcept {
  std::swap(link_, other.link_);
  std::swap(statement_, other.statement_);
  return *this;
}

void PreparedStatement::Release() {
  if (const auto link = link_.lock()) link->Drop(statement_);
  statement_ = nullptr;
}

}  // namespace ktrv::database
