#pragma once

#include "common/Text.h"

namespace ktrv::forms {

/// The tree node whose contents the grid shows. A copy, because the tree is rebuilt while the grid
/// keeps its contents.
struct CurrentNode {
  String Key;        ///< empty until a node is selected
  String Tag;        ///< empty when the node has none
  String ParentKey;  ///< for a top-level node its own key
};

/// Keys of tree nodes: four letters for the kind, followed by the decimal id.
namespace NodeKey {
inline constexpr StringView Shared = u"SHARED";  ///< the root
/// A top-level node of personal contacts. The tree does not create it any more, but still tests for
/// it.
inline constexpr StringView Main = u"MAIN";
inline constexpr StringView SharedFolder = u"SFLD";
inline constexpr StringView RemoteFolder = u"RFLD";
inline constexpr StringView SharedGroup = u"SHGR";

inline StringView KindOf(StringView key) {
  return key.substr(0, 4);
}
/// What follows the kind, digits or not; empty when there is nothing.
inline StringView IdOf(StringView key) {
  return key.size() > 4 ? key.substr(4) : StringView();
}
}  // namespace NodeKey

}  // namespace ktrv::forms
