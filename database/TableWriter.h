#pragma once

#include <optional>
#include <vector>

#include "database/ColumnValues.h"
#include "database/Driver.h"

namespace ktrv::database {

/// Writes rows of a query's result back to the one table that the query reads.
class TableWriter {
 public:
  /// The texts of a row's cells, one for each column of the result.
  using Cells = std::vector<std::optional<String>>;
  using Values = ColumnValues;

  /// \throws Error NotUpdatable when the query reads anything but one table, or the result lacks
  /// the table's key.
  TableWriter(Link& link, StringView query, const std::vector<Column>& columns);

  /// How the key of a new row will be known.
  struct KeySource {
    bool Needed = false;             ///< the engine assigns it
    bool Told = false;               ///< the engine tells it; else the row is found by its values
    std::vector<String> SameBefore;  ///< keys of the rows that hold the same already, unless told
  };

  /// To be asked before a row of these values is added. \throws Error
  KeySource FindKeySource(const Values& values);

  /// Adds a row of these values alone, so that the table's defaults fill the rest. \param cells the
  /// values are filled in, and the key that the engine assigned. \throws Error also when the row is
  /// added and its key cannot be known
  void Insert(Cells& cells, const Values& values, const KeySource& key);

  /// The newest row that holds these values, of those that are not named by their key. \return
  /// whether there is one. \param cells filled with it
  bool FindAdded(Cells& cells, const Values& values, const std::vector<String>& except);

  /// Changes the row of this key, provided that the columns of the values still hold what the cells
  /// say, those too whose value stays the same. \param cells the row as it was read; filled with
  /// the new values. \throws Error RowChanged when one holds something else, RowGone when there is
  /// no such row.
  void Update(Cells& cells, const Values& values);

  /// Reads the row of this key again. \throws Error RowGone when there is none.
  void Read(Cells& cells);

 private:
  struct Condition;
  void AddKeyCondition(Condition& condition, std::size_t column, const Cells& cells) const;
  void AddOldValueCondition(Condition& condition, std::size_t column, const Cells& cells) const;
  Condition KeyCondition(const Cells& cells) const;
  Condition ValueCondition(const Values& values) const;
  bool Holds(const Cells& cells, const Values& values) const;
  /// The rows that hold these values, to the letter.
  std::vector<Cells> RowsWith(const Values& values);
  String KeyFoundByValues(const Values& values, const std::vector<String>& except);
  Values ChangedOf(const Cells& cells, const Values& values) const;
  /// Whether there was a row to change; nothing when the driver cannot tell.
  std::optional<bool> Change(const Values& values, const Condition& condition);
  /// Whether the row of this key holds these values.
  bool HoldsNow(const Cells& cells, const Values& values);
  /// The first row that meets the condition; null when none does.
  std::unique_ptr<RowBlock> Find(const Condition& condition);
  std::unique_ptr<Statement> Run(StringView text, const std::vector<Parameter>& parameters,
                                 const std::vector<Variant>& values);
  void Fill(Cells& cells, const Values& values) const;

  Link& link_;
  const std::vector<Column>& columns_;
  String selectList_;
  String table_;
  std::vector<std::size_t> key_;  // columns of the result
};

}  // namespace ktrv::database
