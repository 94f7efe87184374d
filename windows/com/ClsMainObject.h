#pragma once

#include <memory>

#include "KTRVAddressBook_h.h"
#include "component/clsMain.h"
#include "windows/com/DualObject.h"
#include "windows/com/TextCollectionObject.h"
#include "windows/com/ThreadSession.h"

namespace ktrv::windows {

/// The COM object clsMain: each member forwards to clsMain's member of the same name.
class ClsMainObject final : public DualObject<_clsMain> {
 public:
  /// Uses the calling thread's session and shares its ownership.
  ClsMainObject();

  STDMETHODIMP get_LogFile(BSTR* path) noexcept override;
  STDMETHODIMP put_LogFile(BSTR path) noexcept override;
  STDMETHODIMP get_ClientDBString(BSTR* text) noexcept override;
  STDMETHODIMP put_ClientDBString(BSTR text) noexcept override;
  STDMETHODIMP get_RemoteDBString(BSTR* text) noexcept override;
  STDMETHODIMP put_RemoteDBString(BSTR text) noexcept override;
  STDMETHODIMP get_NewContactId(BSTR* id) noexcept override;
  STDMETHODIMP get_NewContactType(BSTR* type) noexcept override;
  STDMETHODIMP get_NewGroupId(BSTR* id) noexcept override;
  STDMETHODIMP get_NewGroupType(BSTR* type) noexcept override;
  STDMETHODIMP get_NewGroupName(BSTR* name) noexcept override;
  STDMETHODIMP get_SelectedRecipients(_TextCollection** texts) noexcept override;
  STDMETHODIMP get_SelectedMobileNos(_TextCollection** texts) noexcept override;
  STDMETHODIMP get_strContactsName(BSTR* names) noexcept override;

  STDMETHODIMP Init(BSTR p_ClientDBString, BSTR p_RemoteDBString, ::RunApplicationAt p_Runfor,
                    BSTR* p_DbType, BSTR* LogFile, short* result) noexcept override;
  STDMETHODIMP EditContacts(long p_UserId, ::TypeOfContact p_ContactType, long p_ContactID,
                            BSTR* p_ContactName, BSTR* p_MobileNo, long* result) noexcept override;
  STDMETHODIMP AddContacts(long p_UserId, ::TypeOfContact p_ContactType, BSTR* p_ContactName,
                           BSTR* p_MobileNo, long* result) noexcept override;
  STDMETHODIMP AddGroup(long p_UserId, BSTR* m_FolderId, ::TypeOfGroup* p_GroupType,
                        BSTR* p_GroupName, long* result) noexcept override;
  STDMETHODIMP EditGroup(long p_UserId, BSTR* p_GroupId, ::TypeOfGroup* p_GroupType,
                         BSTR* p_GroupName, long* result) noexcept override;
  STDMETHODIMP LoadAddressBook(long p_UserId, long* result) noexcept override;
  STDMETHODIMP LoadRecipients(long p_UserId, VARIANT_BOOL p_ExpandGroups,
                              long* result) noexcept override;
  STDMETHODIMP LoadFolders(long p_UserId, long* result) noexcept override;

 private:
  /// The COM object for the texts; reused as long as the texts are the same object.
  static _TextCollection* Share(ComPtr<TextCollectionObject>& object,
                                std::shared_ptr<TextCollection> texts);

  std::shared_ptr<ThreadSession> thread_;
  clsMain main_;
  ComPtr<TextCollectionObject> recipients_;
  ComPtr<TextCollectionObject> mobileNos_;
};

}  // namespace ktrv::windows
