#pragma once

#include "common/Text.h"

namespace ktrv::forms {

/// The tree node whose contents the grid shows. A copy, because the tree is rebuilt whole and the
/// grid stays where it was.
struct CurrentNode {
  String Key;        ///< empty until a node is chosen
  String Tag;        ///< empty when the node has none
  String ParentKey;  ///< its own key for a top-level node
};

/// Keys of the tree's nodes: four letters of the kind and the decimal id behind them.
namespace NodeKey {
inline constexpr StringView Shared = u"SHARED";  ///< the root
/// A top-level node of personal contacts, which the tree does not make; the tests for it remain.
inline constexpr StringView Main = u"MAIN";
inline constexpr StringView SharedFolder = u"SFLD";
inline constexpr StringView RemoteFolder = u"RFLD";
inline constexpr StringView SharedGroup = u"SHGR";

inline StringView KindOf(StringView key) {
  return key.substr(0, 4);
}
/// The id behind the kind, digits or not; empty when there is none.
inline StringView IdOf(StringView key) {
  return key.size() > 4 ? key.substr(4) : StringView();
}
}  // namespace NodeKey

}  // namespace ktrv::forms
