#pragma once

#include <vector>

#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/RowWork.h"

namespace ktrv::forms {

/// Makes contacts members of a group, each in a transaction of its own.
class MemberAddition final : public RowWork {
 public:
  /// Services and database must outlive the object.
  MemberAddition(Services& services, BookDatabase& database, String groupId,
                 std::vector<String> contactIds);

  struct Counts {
    std::size_t Added = 0;
    std::size_t Present = 0;  ///< were members already
    std::size_t Gone = 0;     ///< contacts that no longer exist
  };
  const Counts& Result() const { return counts_; }
  /// The group no longer exists.
  bool GroupIsGone() const { return groupIsGone_; }

 private:
  void WorkOn(std::size_t row) override;
  String TextWhenStopped() const override;

  ItemStatements statements_;
  const String groupId_;
  const std::vector<String> contactIds_;
  Counts counts_;
  bool groupIsGone_ = false;
};

}  // namespace ktrv::forms
