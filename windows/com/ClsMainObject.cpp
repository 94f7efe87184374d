#include "windows/com/ClsMainObject.h"

#include <utility>

#include "windows/base/Bstr.h"

namespace ktrv::windows {
namespace {

/// The value of an optional by-reference argument; LocalGroup when it is omitted.
std::int32_t ValueOf(const ::TypeOfGroup* type) {
  return type ? *type : ::LocalGroup;
}

}  // namespace

ClsMainObject::ClsMainObject()
    : DualObject(__uuidof(::clsMain)),
      thread_(ThreadSession::Current()),
      main_(thread_->TheSession(), thread_->TheDialogs()) {}

STDMETHODIMP ClsMainObject::get_LogFile(BSTR* path) noexcept {
  return Give(path, [&] { return NewBstr(main_.LogFile()); });
}
STDMETHODIMP ClsMainObject::put_LogFile(BSTR path) noexcept {
  return Run([&] { main_.SetLogFile(String(TextOf(path))); });
}
STDMETHODIMP ClsMainObject::get_ClientDBString(BSTR* text) noexcept {
  return Give(text, [&] { return NewBstr(main_.ClientDBString()); });
}
STDMETHODIMP ClsMainObject::put_ClientDBString(BSTR text) noexcept {
  return Run([&] { main_.SetClientDBString(String(TextOf(text))); });
}
STDMETHODIMP ClsMainObject::get_RemoteDBString(BSTR* text) noexcept {
  return Give(text, [&] { return NewBstr(main_.RemoteDBString()); });
}
STDMETHODIMP ClsMainObject::put_RemoteDBString(BSTR text) noexcept {
  return Run([&] { main_.SetRemoteDBString(String(TextOf(text))); });
}
STDMETHODIMP ClsMainObject::get_NewContactId(BSTR* id) noexcept {
  return Give(id, [&] { return NewBstr(main_.NewContactId()); });
}
STDMETHODIMP ClsMainObject::get_NewContactType(BSTR* type) noexcept {
  return Give(type, [&] { return NewBstr(main_.NewContactType()); });
}
STDMETHODIMP ClsMainObject::get_NewGroupId(BSTR* id) noexcept {
  return Give(id, [&] { return NewBstr(main_.NewGroupId()); });
}
STDMETHODIMP ClsMainObject::get_NewGroupType(BSTR* type) noexcept {
  return Give(type, [&] { return NewBstr(main_.NewGroupType()); });
}
STDMETHODIMP ClsMainObject::get_NewGroupName(BSTR* name) noexcept {
  return Give(name, [&] { return NewBstr(main_.NewGroupName()); });
}
STDMETHODIMP ClsMainObject::get_SelectedRecipients(_TextCollection** texts) noexcept {
  return Give(texts, [&] { return Share(recipients_, main_.SelectedRecipients()); });
}
STDMETHODIMP ClsMainObject::get_SelectedMobileNos(_TextCollection** texts) noexcept {
  return Give(texts, [&] { return Share(mobileNos_, main_.SelectedMobileNos()); });
}
STDMETHODIMP ClsMainObject::get_strContactsName(BSTR* names) noexcept {
  return Give(names, [&] { return NewBstr(main_.strContactsName()); });
}

STDMETHODIMP ClsMainObject::Init(BSTR p_ClientDBString, BSTR p_RemoteDBString,
                                 ::RunApplicationAt p_Runfor, BSTR* p_DbType, BSTR* LogFile,
                                 short* result) noexcept {
  return Give(result, [&] {
    return main_.Init(TextOf(p_ClientDBString), TextOf(p_RemoteDBString), p_Runfor,
                      TextOf(p_DbType), TextOf(LogFile));
  });
}

STDMETHODIMP ClsMainObject::EditContacts(long p_UserId, ::TypeOfContact p_ContactType,
                                         long p_ContactID, BSTR* p_ContactName, BSTR* p_MobileNo,
                                         long* result) noexcept {
  return Give(result, [&] {
    return main_.EditContacts(p_UserId, p_ContactType, p_ContactID, TextOf(p_ContactName),
                              TextOf(p_MobileNo));
  });
}

STDMETHODIMP ClsMainObject::AddContacts(long p_UserId, ::TypeOfContact p_ContactType,
                                        BSTR* p_ContactName, BSTR* p_MobileNo,
                                        long* result) noexcept {
  return Give(result, [&] {
    return main_.AddContacts(p_UserId, p_ContactType, TextOf(p_ContactName), TextOf(p_MobileNo));
  });
}

STDMETHODIMP ClsMainObject::AddGroup(long p_UserId, BSTR* m_FolderId, ::TypeOfGroup* p_GroupType,
                                     BSTR* p_GroupName, long* result) noexcept {
  return Give(result, [&] {
    return main_.AddGroup(p_UserId, TextOf(m_FolderId), ValueOf(p_GroupType), TextOf(p_GroupName));
  });
}

STDMETHODIMP ClsMainObject::EditGroup(long p_UserId, BSTR* p_GroupId, ::TypeOfGroup* p_GroupType,
                                      BSTR* p_GroupName, long* result) noexcept {
  return Give(result, [&] {
    return main_.EditGroup(p_UserId, TextOf(p_GroupId), ValueOf(p_GroupType), TextOf(p_GroupName));
  });
}

STDMETHODIMP ClsMainObject::LoadAddressBook(long p_UserId, long* result) noexcept {
  return Give(result, [&] { return main_.LoadAddressBook(p_UserId); });
}

STDMETHODIMP ClsMainObject::LoadRecipients(long p_UserId, VARIANT_BOOL p_ExpandGroups,
                                           long* result) noexcept {
  return Give(result,
              [&] { return main_.LoadRecipients(p_UserId, p_ExpandGroups != VARIANT_FALSE); });
}

STDMETHODIMP ClsMainObject::LoadFolders(long p_UserId, long* result) noexcept {
  return Give(result, [&] { return main_.LoadFolders(p_UserId); });
}

_TextCollection* ClsMainObject::Share(ComPtr<TextCollectionObject>& object,
                                      std::shared_ptr<TextCollection> texts) {
  if (!object || object->Texts() != texts) {
    object = ComPtr(new TextCollectionObject(std::move(texts)));
  }
  return ComPtr<TextCollectionObject>::Share(object.Get()).Release();
}

}  // namespace ktrv::windows
