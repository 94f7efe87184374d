#include "tests/scripthost/ControlText.h"

#include <functional>
#include <vector>

namespace ktrv::scripthost::ControlText {
namespace {

constexpr int kLongestText = 1024;

std::vector<int> VisibleColumns(HWND list) {
  const auto count = static_cast<size_t>(Header_GetItemCount(ListView_GetHeader(list)));
  std::vector<int> order(count);
  ListView_GetColumnOrderArray(list, static_cast<int>(count), order.data());
  std::erase_if(order, [list](int column) { return ListView_GetColumnWidth(list, column) == 0; });
  return order;
}

std::wstring CellText(HWND list, int row, int column) {
  wchar_t text[kLongestText] = L"";
  LVITEMW item = {};
  item.iSubItem = column;
  item.pszText = text;
  item.cchTextMax = kLongestText;
  SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return item.pszText;
}

std::wstring NodeText(HWND tree, HTREEITEM node) {
  wchar_t text[kLongestText] = L"";
  TVITEMW item = {};
  item.mask = TVIF_TEXT | TVIF_HANDLE;
  item.hItem = node;
  item.pszText = text;
  item.cchTextMax = kLongestText;
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return item.pszText;
}

/// Visits the nodes from this one on, children before the next; stops when the visitor says so.
bool Visit(HWND tree, HTREEITEM node, size_t level,
           const std::function<bool(HTREEITEM, size_t)>& stop) {
  for (; node != nullptr; node = TreeView_GetNextSibling(tree, node)) {
    if (stop(node, level) || Visit(tree, TreeView_GetChild(tree, node), level + 1, stop)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::wstring Rows(HWND list) {
  const std::vector<int> columns = VisibleColumns(list);
  const int count = ListView_GetItemCount(list);
  std::wstring rows;
  for (int row = 0; row < count; ++row) {
    rows += row == 0 ? L"" : L"\n";
    for (size_t index = 0; index < columns.size(); ++index) {
      rows += (index == 0 ? L"" : L"\t") + CellText(list, row, columns[index]);
    }
  }
  return rows;
}

std::wstring Nodes(HWND tree) {
  std::wstring nodes;
  Visit(tree, TreeView_GetRoot(tree), 0, [&](HTREEITEM node, size_t level) {
    nodes += (nodes.empty() ? L"" : L"\n") + std::wstring(2 * level, L' ') + NodeText(tree, node);
    return false;
  });
  return nodes;
}

HTREEITEM Node(HWND tree, const std::wstring& text) {
  HTREEITEM found = nullptr;
  Visit(tree, TreeView_GetRoot(tree), 0, [&](HTREEITEM node, size_t) {
    found = NodeText(tree, node) == text ? node : nullptr;
    return found != nullptr;
  });
  return found;
}

}  // namespace ktrv::scripthost::ControlText
