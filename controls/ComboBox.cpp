#include "controls/ComboBox.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"

namespace ktrv::controls {

ComboBox::ComboBox(Form& form, Rectangle bounds) : ControlOf(form, bounds) {}

void ComboBox::AddItem(String text, std::int32_t itemData) {
  items_.push_back({std::move(text), itemData});
  if (peer_) peer_->ItemsChanged();
}

void ComboBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  if (peer_) peer_->ItemsChanged();
}

const String& ComboBox::List(int index) const {
  return At(index).Text;
}

std::int32_t ComboBox::ItemData(int index) const {
  return At(index).Data;
}

int ComboBox::IndexOf(StringView text) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const Item& item) { return item.Text == text; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= ListCount()) {
    throw Error(ErrorNumber::InvalidPropertyValue);
  }
  if (index == listIndex_) return;
  listIndex_ = index;
  if (peer_) peer_->SelectionChanged();
  if (Click) Click();
}

const String& ComboBox::Text() const {
  static const String kNothing;
  return listIndex_ < 0 ? kNothing : At(listIndex_).Text;
}

void ComboBox::SetText(StringView text) {
  const int index = IndexOf(text);
  if (index < 0 && !text.empty()) {
    throw Error(ErrorNumber::PropertyReadOnly, u"'Text' property is read-only");
  }
  SetListIndex(index);
}

void ComboBox::SetBackColor(std::uint32_t color) {
  if (color == backColor_) return;
  backColor_ = color;
  if (peer_) peer_->BackColorChanged();
}

void ComboBox::UserChooses(int index) {
  if (Enabled() && Visible()) SetListIndex(index);
}

const ComboBox::Item& ComboBox::At(int index) const {
  if (index < 0 || index >= ListCount()) {
    throw Error(ErrorNumber::SubscriptOutOfRange);
  }
  return items_[static_cast<std::size_t>(index)];
}

}  // namespace ktrv::controls
