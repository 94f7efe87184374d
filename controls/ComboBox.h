#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "controls/Color.h"
#include "controls/Control.h"

namespace ktrv::controls {

class ComboBoxPeer : public ControlPeer {
 public:
  virtual void ItemsChanged() = 0;
  virtual void SelectionChanged() = 0;
  virtual void BackColorChanged() {}
};

/// A drop-down list with at most one selected item. Items keep their insertion order and carry an
/// integer for the program's use.
class ComboBox final : public ControlOf<ComboBox, ComboBoxPeer> {
 public:
  ComboBox(Form& form, Rectangle bounds);

  /// Raised when the selection has changed, by the user or by the program.
  std::function<void()> Click;

  void AddItem(String text, std::int32_t itemData = 0);
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  /// Both: \throws Error SubscriptOutOfRange outside 0 to ListCount() - 1
  const String& List(int index) const;
  std::int32_t ItemData(int index) const;
  /// The index of the first item with exactly this text; -1 if there is none.
  int IndexOf(StringView text) const;

  /// The index of the selected item; -1 for none.
  int ListIndex() const { return listIndex_; }
  /// Raises Click if the selection changes. \throws Error InvalidPropertyValue outside -1 to
  /// ListCount() - 1; the selection stays
  void SetListIndex(int index);

  /// The text of the selected item; empty for none.
  const String& Text() const;
  /// Selects the first item with exactly this text; an empty text selects none, unless an item has
  /// it. \throws Error PropertyReadOnly if there is no such item; the selection stays
  void SetText(StringView text);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);

  /// The user selected an item. No effect while the list is disabled or invisible.
  void UserChooses(int index);

 private:
  struct Item {
    String Text;
    std::int32_t Data = 0;
  };
  const Item& At(int index) const;

  std::vector<Item> items_;
  int listIndex_ = -1;
  std::uint32_t backColor_ = kSystemWindowBackground;
};

}  // namespace ktrv::controls
