// The component's published interface as the type library importer declares it, for compiling the hosts
// where that tool does not exist. Order, names, types and ids are those of the IDL file.
using System.Collections;
using System.Runtime.InteropServices;

namespace KTRVAddressBook
{
    public enum RunApplicationAt { RuntAtClient = 0, RuntAtServer = 1 }

    public enum TypeOfContact { LocalContact = 0, SharedContact = 1 }

    public enum TypeOfGroup { LocalGroup = 0, SharedGroup = 1 }

    [ComImport, Guid("AA6F1930-FCC9-4161-80D5-5AB9596042A4")]
    [InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface _TextCollection : IEnumerable
    {
        [DispId(0)] string this[object Index] { get; }
        [DispId(1)] int Count { get; }
        [DispId(-4)] new IEnumerator GetEnumerator();
    }

    [ComImport, Guid("AA6F1930-FCC9-4161-80D5-5AB9596042A3")]
    [InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface _clsMain
    {
        [DispId(1)] string LogFile { get; set; }
        [DispId(2)] string ClientDBString { get; set; }
        [DispId(3)] string RemoteDBString { get; set; }
        [DispId(4)] string NewContactId { get; }
        [DispId(5)] string NewContactType { get; }
        [DispId(6)] string NewGroupId { get; }
        [DispId(7)] string NewGroupType { get; }
        [DispId(8)] string NewGroupName { get; }
        [DispId(9)] _TextCollection SelectedRecipients { get; }
        [DispId(10)] _TextCollection SelectedMobileNos { get; }
        [DispId(11)] string strContactsName { get; }
        [DispId(12)] short Init(string p_ClientDBString, string p_RemoteDBString, RunApplicationAt p_Runfor,
            ref string p_DbType, [Optional] ref string LogFile);
        [DispId(13)] int EditContacts(int p_UserId, TypeOfContact p_ContactType, int p_ContactID,
            [Optional] ref string p_ContactName, [Optional] ref string p_MobileNo);
        [DispId(14)] int AddContacts(int p_UserId, TypeOfContact p_ContactType,
            [Optional] ref string p_ContactName, [Optional] ref string p_MobileNo);
        [DispId(15)] int AddGroup(int p_UserId, ref string m_FolderId, [Optional] ref TypeOfGroup p_GroupType,
            [Optional] ref string p_GroupName);
        [DispId(16)] int EditGroup(int p_UserId, ref string p_GroupId, [Optional] ref TypeOfGroup p_GroupType,
            [Optional] ref string p_GroupName);
        [DispId(17)] int LoadAddressBook(int p_UserId);
        [DispId(18)] int LoadRecipients(int p_UserId, [Optional] bool p_ExpandGroups);
        [DispId(19)] int LoadFolders(int p_UserId);
    }

    [ComImport, Guid("AA6F1930-FCC9-4161-80D5-5AB9596042A3"), CoClass(typeof(clsMainClass))]
    public interface clsMain : _clsMain { }

    [ComImport, Guid("AA6F1930-FCC9-4161-80D5-5AB9596042A2")]
    public class clsMainClass { }
}
