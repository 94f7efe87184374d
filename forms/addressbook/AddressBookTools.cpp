#include "forms/addressbook/AddressBookTools.h"

namespace ktrv::forms {

using controls::Image;

void AddAddressBookTools(controls::ToolBar& bar) {
  bar.AddButton({.Key = String(ToolKey::New),
                 .Caption = u"&New",
                 .ToolTip = u"Create a contact (Ctrl+N) or a group (Ctrl+Shift+N)",
                 .Picture = Image::New,
                 .DropDown = true});
  bar.AddButton({.Key = String(ToolKey::Properties),
                 .Caption = u"&Properties",
                 .ToolTip = u"Show or change the selected item (Alt+Enter or F2)",
                 .Picture = Image::Properties});
  bar.AddButton({.Key = String(ToolKey::Delete),
                 .Caption = u"&Delete",
                 .ToolTip = u"Delete the selected items (Del)",
                 .Picture = Image::Delete});
  bar.AddButton({.Key = String(ToolKey::Refresh),
                 .Caption = u"&Refresh",
                 .ToolTip = u"Load the contacts again (F5)",
                 .Picture = Image::Refresh});
}

}  // namespace ktrv::forms
