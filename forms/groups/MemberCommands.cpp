#include "forms/groups/MemberCommands.h"

#include <numeric>

#include "forms/groups/NameList.h"
#include "forms/groups/PastedText.h"
#include "services/RowText.h"

namespace ktrv::forms {
namespace {

constexpr StringView kRemoveAll =
    u"KTRVAddressBook: Error occurred. Sub:cmdRemoveAll_Click(), Module: frmGroupsNew()";
constexpr StringView kUndo =
    u"KTRVAddressBook: Error occurred. Sub:cmdUndo_Click(), Module: frmGroupsNew()";
constexpr StringView kPaste =
    u"KTRVAddressBook: Error occurred. Sub:cmdPaste_Click(), Module: frmGroupsNew()";
constexpr StringView kCopy =
    u"KTRVAddressBook: Error occurred. Sub:cmdCopy_Click(), Module: frmGroupsNew()";
constexpr StringView kSelect =
    u"KTRVAddressBook: Error occurred. Sub:SelectCounted(), Module: frmGroupsNew()";

/// What was not added; empty if all was.
String LeftOut(const PastedText::Found& found) {
  constexpr std::size_t kMost = 20;
  String text;
  const auto add = [&](StringView what, const std::vector<String>& fields) {
    if (fields.empty()) return;
    if (!text.empty()) text += u" ";
    text += String(what) + u": " + Listed(fields, kMost) + u".";
  };
  add(u"Not found in the list on the left", found.Missing);
  add(u"There are several of these", found.Several);
  add(u"Name and number belong to different people", found.Differing);
  return text;
}

}  // namespace

void MemberCommands::Connect() {
  const auto connect = [this](controls::CommandButton& button, StringView context, auto command) {
    button.Click = [this, context, command] { services_.Trap(context, command); };
  };
  connect(buttons_.RemoveAll, kRemoveAll, [this] {
    JobProgress progress(progress_, u"Removing Contacts...",
                         2 * std::int64_t{lists_.Members.Count()});
    lists_.Members.RemoveAll(progress);
  });
  connect(buttons_.Undo, kUndo, [this] {
    JobProgress progress(progress_, u"Undoing...", 1);
    lists_.Members.Undo(progress);
  });
  connect(buttons_.Paste, kPaste, [this] { Paste(); });
  connect(buttons_.Copy, kCopy, [this] { Copy(); });
  connect(buttons_.WithoutNumber, kSelect, [this] { Select(lists_.Count.WithoutNumber()); });
  connect(buttons_.Twice, kSelect, [this] { Select(lists_.Count.Twice()); });
  const auto inList = [this] { return lists_.MemberGrid.HasFocus(); };
  const auto add = [&](char16_t letter, controls::CommandButton& button) {
    buttons_.Undo.Parent().Shortcuts.push_back({static_cast<std::int16_t>(letter),
                                                controls::ShiftMask::Ctrl,
                                                [&button] { button.UserClicks(); }, inList});
  };
  add(u'Z', buttons_.Undo);
  add(u'V', buttons_.Paste);
  add(u'C', buttons_.Copy);
}

void MemberCommands::ShowWhatIsPossible(bool mayChange) {
  const MemberList& members = lists_.Members;
  const bool possible = mayChange && members.IsComplete();
  buttons_.Remove.SetEnabled(possible && lists_.MemberGrid.Selection().Count() > 0);
  buttons_.RemoveAll.SetEnabled(possible && members.Count() > 0);
  buttons_.Undo.SetEnabled(possible && members.CanUndo());
  buttons_.Paste.SetEnabled(possible && lists_.Source.IsComplete());
  buttons_.Copy.SetEnabled(members.IsComplete() && members.Count() > 0);
  const auto offer = [&](controls::CommandButton& button, const controls::RowSelection& rows) {
    button.SetEnabled(members.IsComplete() && !rows.Ranges().empty());
  };
  offer(buttons_.WithoutNumber, lists_.Count.WithoutNumber());
  offer(buttons_.Twice, lists_.Count.Twice());
}

void MemberCommands::Paste() {
  const controls::Form::Stay stay(buttons_.Paste.Parent());
  const controls::Screen& screen = services_.Screen;
  PastedText pasted(services_.Screen.ClipboardText().value_or(String()), screen.UserLanguage());
  if (pasted.IsEmpty()) {
    services_.ShowMessage(u"The clipboard contains no names or numbers.",
                          MessageStyle::Exclamation);
    return;
  }
  PastedText::Found found;
  try {
    JobProgress progress(progress_, u"Looking for the pasted contacts...",
                         lists_.SourceGrid.Rows() - 1);
    found = pasted.FindIn(lists_.SourceGrid, progress);
    progress.Extend(static_cast<std::int64_t>(found.Rows.size()));
    lists_.Members.Take(lists_.SourceGrid, found.Rows, progress);
  } catch (const Stopped&) {
    lists_.Members.Say(u"Stopped. Nothing was added.");
  }
  const String leftOut = LeftOut(found);
  if (!leftOut.empty()) services_.ShowMessage(leftOut, MessageStyle::Exclamation);
}

void MemberCommands::Select(const controls::RowSelection& rows) {
  if (rows.Ranges().empty()) return;
  lists_.MemberGrid.SelectRows(rows);
  lists_.MemberGrid.ShowRow(lists_.MemberGrid.Row());
  lists_.Members.Say(ToDecimal(rows.Count()) + u" selected");
}

void MemberCommands::Copy() {
  std::vector<int> rows(static_cast<std::size_t>(lists_.Members.Count()));
  std::iota(rows.begin(), rows.end(), 1);
  services_.Screen.SetClipboardText(RowsText(lists_.MemberGrid, rows));
  lists_.Members.Say(ToDecimal(lists_.Members.Count()) + u" copied");
}

}  // namespace ktrv::forms
