#pragma once

#include <optional>
#include <vector>

#include "database/ColumnValues.h"
#include "database/Driver.h"

namespace ktrv::database {

/// Writes rows of a recordset back to the single table of its query.
class TableWriter {
 public:
  /// The texts of a row's cells, one per column of the result.
  using Cells = std::vector<std::optional<String>>;
  using Values = ColumnValues;

  /// \throws Error NotUpdatable if the query reads more than one table, or its result lacks the
  /// table's key
  TableWriter(Link& link, StringView query, const std::vector<Column>& columns);

  /// How the key of a new row will be determined.
  struct KeySource {
    bool Needed = false;  ///< the engine assigns it
    bool Told = false;    ///< the engine reports it; else found by values
    /// Keys of rows with the same values; only if it is Needed and not Told.
    std::optional<std::vector<String>> SameBefore;
  };

  /// Call before Insert. \throws Error
  KeySource FindKeySource(const Values& values);

  /// Inserts a row with only these values, so that the others get the table's defaults. \param
  /// cells receives the values and the assigned key. \throws Error also if the row was inserted but
  /// its key cannot be determined
  void Insert(Cells& cells, const Values& values, const KeySource& key);

  /// The text of the row's key; nullopt if it has several columns.
  std::optional<String> KeyOf(const Cells& cells) const;

  /// Finds the newest row with these values, except rows with the keys in `except`; only the one
  /// with the key `ofKey`, if given. \return whether there is one. \param cells receives it
  bool FindAdded(Cells& cells, Values values, const std::vector<String>& except,
                 const std::optional<String>& ofKey);

  /// Updates the row with this key, if all columns in `values` still have the old values in
  /// `cells`, also those whose value stays the same. \param cells the row as read; receives the new
  /// values. \throws Error RowChanged if an old value differs; RowGone if the row no longer exists
  void Update(Cells& cells, const Values& values);

  /// Reads the row with this key again. \throws Error RowGone if it no longer exists
  void Read(Cells& cells);

 private:
  struct Condition;
  void AddKeyCondition(Condition& condition, std::size_t column, const Cells& cells) const;
  void AddOldValueCondition(Condition& condition, std::size_t column, const Cells& cells) const;
  Condition KeyCondition(const Cells& cells) const;
  Condition ValueCondition(const Values& values) const;
  bool Holds(const Cells& cells, const Values& values) const;
  /// The rows with these values; texts are compared exactly.
  std::vector<Cells> RowsWith(const Values& values);
  String KeyFoundByValues(const Values& values, const std::vector<String>& except);
  Values ChangedOf(const Cells& cells, const Values& values) const;
  /// \return whether a row was updated; nullopt if the driver cannot tell
  std::optional<bool> Change(const Values& values, const Condition& condition);
  /// Whether the row with this key has these values.
  bool HoldsNow(const Cells& cells, const Values& values);
  /// The first row that matches the condition; null if there is none.
  std::unique_ptr<RowBlock> Find(const Condition& condition);
  std::unique_ptr<Statement> Run(StringView text, const std::vector<Parameter>& parameters,
                                 const std::vector<Variant>& values);
  void Fill(Cells& cells, const Values& values) const;

  Link& link_;
  const std::vector<Column>& columns_;
  String selectList_;
  String table_;
  std::vector<std::size_t> key_;  // column indices
};

}  // namespace ktrv::database
