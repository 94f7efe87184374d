#include <map>
#include <vector>

#include "tests/wine/component/Component.h"

namespace ktrv::tests {
namespace {

class TypeLibrary : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(LoadTypeLibEx(DllPath().c_str(), REGKIND_NONE, library_.Out()), S_OK);
  }

  ComPtr<ITypeInfo> Type(const wchar_t* name) {
    ComPtr<ITypeInfo> type;
    auto* spelled = const_cast<wchar_t*>(name);
    MEMBERID id = 0;
    USHORT count = 1;
    EXPECT_EQ(library_->FindName(spelled, 0, type.Out(), &id, &count), S_OK);
    EXPECT_EQ(count, 1) << name;
    return type;
  }

  static std::wstring Name(ITypeInfo& type, MEMBERID member) {
    Bstr name;
    type.GetDocumentation(member, name.Address(), nullptr, nullptr, nullptr);
    return name.Text();
  }

  /// "Name=number" of each member, in order.
  std::vector<std::wstring> Members(const wchar_t* enumeration) {
    std::vector<std::wstring> members;
    const ComPtr<ITypeInfo> type = Type(enumeration);
    VARDESC* member = nullptr;
    for (UINT i = 0; SUCCEEDED(type->GetVarDesc(i, &member)); ++i) {
      members.push_back(Name(*type.Get(), member->memid) + L"=" +
                        std::to_wstring(V_I4(member->lpvarValue)));
      type->ReleaseVarDesc(member);
    }
    return members;
  }

  ComPtr<ITypeLib> library_;
};

using Texts = std::vector<std::wstring>;

TEST_F(TypeLibrary, HasTheSevenEnumerations) {
  EXPECT_EQ(Members(L"RunApplicationAt"), (Texts{L"RuntAtClient=0", L"RuntAtServer=1"}));
  EXPECT_EQ(Members(L"ModeOfOperation"), (Texts{L"Add=0", L"Modify=1"}));
  EXPECT_EQ(Members(L"TypeOfContact"), (Texts{L"LocalContact=0", L"SharedContact=1"}));
  EXPECT_EQ(Members(L"UserType"), (Texts{L"GeneralUser=0", L"Administrator=1"}));
  EXPECT_EQ(Members(L"TypeOfGroup"), (Texts{L"LocalGroup=0", L"SharedGroup=1"}));
  EXPECT_EQ(Members(L"LoadGroupFor"), (Texts{L"AddModify=0", L"SelectReceipient=1"}));
  EXPECT_EQ(Members(L"TypeOfFolder"),
            (Texts{L"LocalFolder=0", L"SharedFolder=1", L"SharedRemoteFolder=2"}));
}

TEST_F(TypeLibrary, IsNamedAfterTheComponent) {
  Bstr name;
  library_->GetDocumentation(-1, name.Address(), nullptr, nullptr, nullptr);
  EXPECT_EQ(name.Text(), L"KTRVAddressBook");
}

TEST_F(TypeLibrary, HasTheMembersOfTheInterfaceInOrder) {
  const ComPtr<ITypeInfo> type = Type(L"_clsMain");
  Texts members;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(type->GetFuncDesc(i, &function)); ++i) {
    // What the interface inherits has ids in the system's own range.
    if (function->memid < 0x60000000) {
      members.push_back((function->invkind == INVOKE_PROPERTYPUT ? L"let " : L"") +
                        Name(*type.Get(), function->memid));
    }
    type->ReleaseFuncDesc(function);
  }
  EXPECT_EQ(
      members,
      (Texts{L"LogFile",           L"let LogFile",        L"ClientDBString", L"let ClientDBString",
             L"RemoteDBString",    L"let RemoteDBString", L"NewContactId",   L"NewContactType",
             L"NewGroupId",        L"NewGroupType",       L"NewGroupName",   L"SelectedRecipients",
             L"SelectedMobileNos", L"strContactsName",    L"Init",           L"EditContacts",
             L"AddContacts",       L"AddGroup",           L"EditGroup",      L"LoadAddressBook",
             L"LoadRecipients",    L"LoadFolders"}));
}

TEST_F(TypeLibrary, TellsTypesReferencesAndWhatMayBeLeftOut) {
  const ComPtr<ITypeInfo> type = Type(L"_clsMain");
  const std::map<std::wstring, std::wstring> wanted = {
      {L"Init", L"text text enum text& text&? : i2"},
      {L"EditContacts", L"i4 enum i4 text&? text&? : i4"},
      {L"AddContacts", L"i4 enum text&? text&? : i4"},
      {L"AddGroup", L"i4 text& enum&? text&? : i4"},
      {L"EditGroup", L"i4 text& enum&? text&? : i4"},
      {L"LoadAddressBook", L"i4 : i4"},
      {L"LoadRecipients", L"i4 bool? : i4"},
      {L"LoadFolders", L"i4 : i4"},
  };
  const auto word = [](const TYPEDESC& description) -> std::wstring {
    switch (description.vt) {
      case VT_BSTR:
        return L"text";
      case VT_I4:
        return L"i4";
      case VT_I2:
        return L"i2";
      case VT_BOOL:
        return L"bool";
      case VT_USERDEFINED:
        return L"enum";
      default:
        return L"?" + std::to_wstring(description.vt);
    }
  };
  std::map<std::wstring, std::wstring> found;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(type->GetFuncDesc(i, &function)); ++i) {
    if (function->memid < 0x60000000 && function->invkind == INVOKE_FUNC) {
      std::wstring signature;
      for (SHORT k = 0; k < function->cParams; ++k) {
        const ELEMDESC& parameter = function->lprgelemdescParam[k];
        const bool reference = parameter.tdesc.vt == VT_PTR;
        signature += word(reference ? *parameter.tdesc.lptdesc : parameter.tdesc);
        if (reference) signature += L"&";
        if (parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) signature += L"?";
        signature += L" ";
      }
      found[Name(*type.Get(), function->memid)] =
          signature + L": " + word(function->elemdescFunc.tdesc);
    }
    type->ReleaseFuncDesc(function);
  }
  EXPECT_EQ(found, wanted);
}

TEST_F(TypeLibrary, NoExpansionOfGroupsIsTheDefault) {
  const ComPtr<ITypeInfo> type = Type(L"_clsMain");
  std::map<std::wstring, std::wstring> defaults;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(type->GetFuncDesc(i, &function)); ++i) {
    for (SHORT k = 0; k < function->cParams; ++k) {
      const PARAMDESC& parameter = function->lprgelemdescParam[k].paramdesc;
      if (!(parameter.wParamFlags & PARAMFLAG_FHASDEFAULT)) continue;
      const VARIANT& value = parameter.pparamdescex->varDefaultValue;
      const std::wstring text =
          V_VT(&value) == VT_BSTR
              ? L"\"" + std::wstring(V_BSTR(&value) ? V_BSTR(&value) : L"")
              : std::to_wstring(V_VT(&value)) + L":" + std::to_wstring(V_I2(&value));
      defaults[Name(*type.Get(), function->memid) + L" " + std::to_wstring(k)] = text;
    }
    type->ReleaseFuncDesc(function);
  }
  const std::map<std::wstring, std::wstring> wanted = {{L"LoadRecipients 1", L"11:0"}};
  EXPECT_EQ(defaults, wanted);  // a VT_BOOL, and false
}

}  // namespace
}  // namespace ktrv::tests
