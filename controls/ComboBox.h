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

/// A drop-down list: one of its items is chosen, or none. Items keep the order in which they were
/// added, and each carries a number of the program's own.
class ComboBox final : public ControlOf<ComboBoxPeer> {
 public:
  ComboBox(Form& form, Rectangle bounds);

  /// An item was chosen, by the user or by the program.
  std::function<void()> Click;

  void AddItem(String text, std::int32_t itemData = 0);
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  /// Both \throw Error SubscriptOutOfRange outside 0 to ListCount - 1.
  const String& List(int index) const;
  std::int32_t ItemData(int index) const;
  /// Index of the first item that has exactly this text; -1 when there is none.
  int IndexOf(StringView text) const;

  /// The chosen item; -1 for none.
  int ListIndex() const { return listIndex_; }
  /// Reports Click when it differs. \throws Error InvalidPropertyValue outside -1 to ListCount - 1;
  /// the choice stays.
  void SetListIndex(int index);

  /// The chosen item's text; empty when none is chosen.
  const String& Text() const;
  /// Chooses the item that has exactly this text; the empty text chooses none unless an item has
  /// it. \throws Error PropertyReadOnly when there is no such item: a drop-down list shows nothing
  /// but its items. The choice stays.
  void SetText(StringView text);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);

  /// The user chose the item; nothing happens while the list is disabled or invisible.
  void UserChooses(int index);

  void Realise(PeerFactory& factory) override;

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
