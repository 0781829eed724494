// The part of the Windows API that this program calls, for building it on other systems.
//
// Names, values, layouts and answers are those of the Windows headers, so that the same source
// compiles against either. The calls are answered by the machine::Machine that is in force
// (machine/Machine.h); without one they fail with ERROR_NOT_READY. Every call behaves as it does
// for a 32-bit process. The program calls the wide ones alone, so there are no others.
#ifndef ZELVREG_MACHINE_API_WINDOWS_H
#define ZELVREG_MACHINE_API_WINDOWS_H

#include <cstddef>
#include <cstdint>

#define WINAPI

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using BOOL = std::int32_t;
using BOOLEAN = std::uint8_t;
using ULONGLONG = std::uint64_t;
using LONGLONG = std::int64_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using WCHAR = char16_t;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;
using PULONG = ULONG*;
using LPBOOL = BOOL*;
using PBOOL = BOOL*;
using HANDLE = void*;
using HLOCAL = void*;
using HMODULE = struct HINSTANCE__*;
using HKEY = struct HKEY__*;
using PHKEY = HKEY*;
using REGSAM = DWORD;
using ACCESS_MASK = DWORD;
using LSTATUS = LONG;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
inline constexpr DWORD MAX_PATH = 260;

// System error codes.
inline constexpr LONG ERROR_SUCCESS = 0;
inline constexpr LONG NO_ERROR = 0;
inline constexpr LONG ERROR_FILE_NOT_FOUND = 2;
inline constexpr LONG ERROR_PATH_NOT_FOUND = 3;
inline constexpr LONG ERROR_ACCESS_DENIED = 5;
inline constexpr LONG ERROR_INVALID_HANDLE = 6;
inline constexpr LONG ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr LONG ERROR_OUTOFMEMORY = 14;
inline constexpr LONG ERROR_NO_MORE_FILES = 18;
inline constexpr LONG ERROR_NOT_READY = 21;
inline constexpr LONG ERROR_GEN_FAILURE = 31;
inline constexpr LONG ERROR_SHARING_VIOLATION = 32;
inline constexpr LONG ERROR_FILE_EXISTS = 80;
inline constexpr LONG ERROR_INVALID_PARAMETER = 87;
inline constexpr LONG ERROR_DISK_FULL = 112;
inline constexpr LONG ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr LONG ERROR_INVALID_NAME = 123;
inline constexpr LONG ERROR_DIR_NOT_EMPTY = 145;
inline constexpr LONG ERROR_BAD_PATHNAME = 161;
inline constexpr LONG ERROR_ALREADY_EXISTS = 183;
inline constexpr LONG ERROR_ENVVAR_NOT_FOUND = 203;
inline constexpr LONG ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr LONG ERROR_MORE_DATA = 234;
inline constexpr LONG ERROR_NO_MORE_ITEMS = 259;
inline constexpr LONG ERROR_BADKEY = 1010;
inline constexpr LONG ERROR_KEY_DELETED = 1018;
inline constexpr LONG ERROR_CHILD_MUST_BE_VOLATILE = 1021;
inline constexpr LONG ERROR_NO_UNICODE_TRANSLATION = 1113;
inline constexpr LONG ERROR_NONE_MAPPED = 1332;
inline constexpr LONG ERROR_INVALID_ACL = 1336;
inline constexpr LONG ERROR_INVALID_SID = 1337;
inline constexpr LONG ERROR_INVALID_SECURITY_DESCR = 1338;
inline constexpr LONG ERROR_ALLOTTED_SPACE_EXCEEDED = 1344;
inline constexpr LONG ERROR_CANT_ACCESS_FILE = 1920;
inline constexpr LONG ERROR_CANT_RESOLVE_FILENAME = 1921;
inline constexpr LONG ERROR_NOT_A_REPARSE_POINT = 4390;
inline constexpr LONG ERROR_REPARSE_TAG_MISMATCH = 4394;

// Registry.
#define ZELVREG_PREDEFINED_KEY(number) \
  (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<ULONG>(number))))
#define HKEY_CLASSES_ROOT ZELVREG_PREDEFINED_KEY(0x80000000U)
#define HKEY_CURRENT_USER ZELVREG_PREDEFINED_KEY(0x80000001U)
#define HKEY_LOCAL_MACHINE ZELVREG_PREDEFINED_KEY(0x80000002U)
#define HKEY_USERS ZELVREG_PREDEFINED_KEY(0x80000003U)
#define HKEY_PERFORMANCE_DATA ZELVREG_PREDEFINED_KEY(0x80000004U)
#define HKEY_CURRENT_CONFIG ZELVREG_PREDEFINED_KEY(0x80000005U)
#define HKEY_DYN_DATA ZELVREG_PREDEFINED_KEY(0x80000006U)

inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_EXPAND_SZ = 2;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
inline constexpr DWORD REG_DWORD_BIG_ENDIAN = 5;
inline constexpr DWORD REG_LINK = 6;
inline constexpr DWORD REG_MULTI_SZ = 7;
inline constexpr DWORD REG_RESOURCE_LIST = 8;
inline constexpr DWORD REG_FULL_RESOURCE_DESCRIPTOR = 9;
inline constexpr DWORD REG_RESOURCE_REQUIREMENTS_LIST = 10;
inline constexpr DWORD REG_QWORD = 11;

inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_OPTION_BACKUP_RESTORE = 4;
inline constexpr DWORD REG_OPTION_OPEN_LINK = 8;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

inline constexpr DWORD DELETE_ACCESS = 0x00010000;
#define DELETE DELETE_ACCESS
inline constexpr DWORD READ_CONTROL = 0x00020000;
inline constexpr DWORD WRITE_DAC = 0x00040000;
inline constexpr DWORD WRITE_OWNER = 0x00080000;
inline constexpr DWORD SYNCHRONIZE = 0x00100000;
inline constexpr DWORD ACCESS_SYSTEM_SECURITY = 0x01000000;
inline constexpr DWORD MAXIMUM_ALLOWED = 0x02000000;
inline constexpr DWORD GENERIC_ALL = 0x10000000;
inline constexpr DWORD GENERIC_EXECUTE = 0x20000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD GENERIC_READ = 0x80000000;

inline constexpr DWORD KEY_QUERY_VALUE = 0x0001;
inline constexpr DWORD KEY_SET_VALUE = 0x0002;
inline constexpr DWORD KEY_CREATE_SUB_KEY = 0x0004;
inline constexpr DWORD KEY_ENUMERATE_SUB_KEYS = 0x0008;
inline constexpr DWORD KEY_NOTIFY = 0x0010;
inline constexpr DWORD KEY_CREATE_LINK = 0x0020;
inline constexpr DWORD KEY_WOW64_64KEY = 0x0100;
inline constexpr DWORD KEY_WOW64_32KEY = 0x0200;
inline constexpr DWORD KEY_READ = 0x20019;
inline constexpr DWORD KEY_WRITE = 0x20006;
inline constexpr DWORD KEY_ALL_ACCESS = 0xF003F;

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};

struct SECURITY_ATTRIBUTES {
  DWORD nLength;
  LPVOID lpSecurityDescriptor;
  BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

extern "C" {
LSTATUS RegCloseKey(HKEY key);
LSTATUS RegOpenKeyW(HKEY key, LPCWSTR subKey, PHKEY result);
LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result);
LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR className, DWORD options,
                        REGSAM access, const SECURITY_ATTRIBUTES* security, PHKEY result,
                        LPDWORD disposition);
LSTATUS RegEnumKeyW(HKEY key, DWORD index, LPWSTR name, DWORD nameSize);
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPWSTR className, LPDWORD classSize, FILETIME* lastWrite);
LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved,
                      LPDWORD type, LPBYTE data, LPDWORD dataSize);
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD dataSize);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR valueName, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD dataSize);
LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subKey);
LSTATUS RegDeleteKeyExW(HKEY key, LPCWSTR subKey, REGSAM view, DWORD reserved);
LSTATUS RegDeleteValueW(HKEY key, LPCWSTR valueName);
}

// Security.
using PSID = void*;
using PSECURITY_DESCRIPTOR = void*;
using SECURITY_INFORMATION = DWORD;
using SECURITY_DESCRIPTOR_CONTROL = WORD;
using PSECURITY_DESCRIPTOR_CONTROL = WORD*;

inline constexpr SECURITY_INFORMATION OWNER_SECURITY_INFORMATION = 1;
inline constexpr SECURITY_INFORMATION GROUP_SECURITY_INFORMATION = 2;
inline constexpr SECURITY_INFORMATION DACL_SECURITY_INFORMATION = 4;
inline constexpr SECURITY_INFORMATION SACL_SECURITY_INFORMATION = 8;

inline constexpr DWORD SECURITY_DESCRIPTOR_REVISION = 1;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_OWNER_DEFAULTED = 0x0001;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_GROUP_DEFAULTED = 0x0002;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_DACL_PRESENT = 0x0004;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_DACL_DEFAULTED = 0x0008;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_SACL_PRESENT = 0x0010;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_DACL_AUTO_INHERIT_REQ = 0x0100;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_SACL_AUTO_INHERIT_REQ = 0x0200;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_DACL_AUTO_INHERITED = 0x0400;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_SACL_AUTO_INHERITED = 0x0800;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_DACL_PROTECTED = 0x1000;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_SACL_PROTECTED = 0x2000;
inline constexpr SECURITY_DESCRIPTOR_CONTROL SE_SELF_RELATIVE = 0x8000;

inline constexpr BYTE ACL_REVISION = 2;
inline constexpr BYTE ACCESS_ALLOWED_ACE_TYPE = 0;
inline constexpr BYTE ACCESS_DENIED_ACE_TYPE = 1;
inline constexpr BYTE OBJECT_INHERIT_ACE = 1;
inline constexpr BYTE CONTAINER_INHERIT_ACE = 2;
inline constexpr BYTE NO_PROPAGATE_INHERIT_ACE = 4;
inline constexpr BYTE INHERIT_ONLY_ACE = 8;
inline constexpr BYTE INHERITED_ACE = 16;

struct SID_IDENTIFIER_AUTHORITY {
  BYTE Value[6];
};
using PSID_IDENTIFIER_AUTHORITY = SID_IDENTIFIER_AUTHORITY*;

// A security identifier; SubAuthorityCount sub-authorities follow the fixed part.
struct SID {
  BYTE Revision;
  BYTE SubAuthorityCount;
  SID_IDENTIFIER_AUTHORITY IdentifierAuthority;
  DWORD SubAuthority[1];
};

enum SID_NAME_USE {
  SidTypeUser = 1,
  SidTypeGroup,
  SidTypeDomain,
  SidTypeAlias,
  SidTypeWellKnownGroup,
  SidTypeDeletedAccount,
  SidTypeInvalid,
  SidTypeUnknown,
};
using PSID_NAME_USE = SID_NAME_USE*;

struct ACL {
  BYTE AclRevision;
  BYTE Sbz1;
  WORD AclSize;
  WORD AceCount;
  WORD Sbz2;
};
using PACL = ACL*;

struct ACE_HEADER {
  BYTE AceType;
  BYTE AceFlags;
  WORD AceSize;
};
using PACE_HEADER = ACE_HEADER*;

struct ACCESS_ALLOWED_ACE {
  ACE_HEADER Header;
  ACCESS_MASK Mask;
  DWORD SidStart;
};
using ACCESS_DENIED_ACE = ACCESS_ALLOWED_ACE;

// The absolute form. The self-relative form that the Get…Security calls give has four 32-bit
// offsets in place of the pointers; the descriptor calls tell them apart by SE_SELF_RELATIVE.
struct SECURITY_DESCRIPTOR {
  BYTE Revision;
  BYTE Sbz1;
  SECURITY_DESCRIPTOR_CONTROL Control;
  PSID Owner;
  PSID Group;
  PACL Sacl;
  PACL Dacl;
};

// The process's token and its privileges.
struct LUID {
  DWORD LowPart;
  LONG HighPart;
};
struct LUID_AND_ATTRIBUTES {
  LUID Luid;
  DWORD Attributes;
};
struct TOKEN_PRIVILEGES {
  DWORD PrivilegeCount;
  LUID_AND_ATTRIBUTES Privileges[1];
};
using PTOKEN_PRIVILEGES = TOKEN_PRIVILEGES*;
struct SID_AND_ATTRIBUTES {
  PSID Sid;
  DWORD Attributes;
};
struct TOKEN_USER {
  SID_AND_ATTRIBUTES User;
};
enum TOKEN_INFORMATION_CLASS { TokenUser = 1 };

inline constexpr DWORD TOKEN_QUERY = 0x0008;
inline constexpr DWORD TOKEN_ADJUST_PRIVILEGES = 0x0020;
inline constexpr DWORD SE_PRIVILEGE_ENABLED = 2;

enum ACL_INFORMATION_CLASS { AclRevisionInformation = 1, AclSizeInformation };

struct ACL_SIZE_INFORMATION {
  DWORD AceCount;
  DWORD AclBytesInUse;
  DWORD AclBytesFree;
};

extern "C" {
LSTATUS RegGetKeySecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                          LPDWORD size);
LSTATUS RegSetKeySecurity(HKEY key, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor);
BOOL GetFileSecurityW(LPCWSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor,
                      DWORD size, LPDWORD needed);
BOOL SetFileSecurityW(LPCWSTR path, SECURITY_INFORMATION what, PSECURITY_DESCRIPTOR descriptor);

BOOL LookupAccountNameW(LPCWSTR systemName, LPCWSTR accountName, PSID sid, LPDWORD sidSize,
                        LPWSTR domain, LPDWORD domainSize, PSID_NAME_USE use);
BOOL AllocateAndInitializeSid(PSID_IDENTIFIER_AUTHORITY authority, BYTE count, DWORD sub0,
                              DWORD sub1, DWORD sub2, DWORD sub3, DWORD sub4, DWORD sub5,
                              DWORD sub6, DWORD sub7, PSID* sid);
PVOID FreeSid(PSID sid);
DWORD GetLengthSid(PSID sid);
BOOL EqualSid(PSID first, PSID second);

BOOL OpenProcessToken(HANDLE process, DWORD access, HANDLE* token);
BOOL LookupPrivilegeValueW(LPCWSTR systemName, LPCWSTR name, LUID* value);
BOOL AdjustTokenPrivileges(HANDLE token, BOOL disablesAll, PTOKEN_PRIVILEGES changes, DWORD size,
                           PTOKEN_PRIVILEGES before, PDWORD needed);
BOOL GetTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS what, LPVOID information, DWORD size,
                         PDWORD needed);

inline constexpr WORD EVENTLOG_ERROR_TYPE = 1;
inline constexpr WORD EVENTLOG_WARNING_TYPE = 2;
inline constexpr WORD EVENTLOG_INFORMATION_TYPE = 4;
HANDLE RegisterEventSourceW(LPCWSTR server, LPCWSTR source);
BOOL ReportEventW(HANDLE source, WORD type, WORD category, DWORD number, PSID user, WORD count,
                  DWORD dataSize, LPCWSTR* texts, LPVOID data);
BOOL DeregisterEventSource(HANDLE source);

BOOL InitializeSecurityDescriptor(PSECURITY_DESCRIPTOR descriptor, DWORD revision);
BOOL GetSecurityDescriptorOwner(PSECURITY_DESCRIPTOR descriptor, PSID* owner, LPBOOL defaulted);
BOOL GetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, LPBOOL present, PACL* acl,
                               LPBOOL defaulted);
BOOL SetSecurityDescriptorDacl(PSECURITY_DESCRIPTOR descriptor, BOOL present, PACL acl,
                               BOOL defaulted);
BOOL GetSecurityDescriptorControl(PSECURITY_DESCRIPTOR descriptor,
                                  PSECURITY_DESCRIPTOR_CONTROL control, LPDWORD revision);
BOOL SetSecurityDescriptorControl(PSECURITY_DESCRIPTOR descriptor, SECURITY_DESCRIPTOR_CONTROL mask,
                                  SECURITY_DESCRIPTOR_CONTROL values);
BOOL GetAclInformation(PACL acl, LPVOID information, DWORD size, ACL_INFORMATION_CLASS what);
BOOL InitializeAcl(PACL acl, DWORD size, DWORD revision);
BOOL GetAce(PACL acl, DWORD index, LPVOID* ace);
BOOL AddAce(PACL acl, DWORD revision, DWORD startIndex, LPVOID aces, DWORD size);
BOOL AddAccessAllowedAce(PACL acl, DWORD revision, DWORD mask, PSID sid);
}

// Files.
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr UINT DRIVE_UNKNOWN = 0;
inline constexpr UINT DRIVE_NO_ROOT_DIR = 1;
inline constexpr UINT DRIVE_REMOVABLE = 2;
inline constexpr UINT DRIVE_FIXED = 3;
inline constexpr UINT DRIVE_REMOTE = 4;
inline constexpr UINT DRIVE_CDROM = 5;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x02;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x04;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;
inline constexpr DWORD FILE_FLAG_OPEN_REPARSE_POINT = 0x00200000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr DWORD MOVEFILE_WRITE_THROUGH = 8;

struct WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwReserved0;
  DWORD dwReserved1;
  WCHAR cFileName[MAX_PATH];
  WCHAR cAlternateFileName[14];
};

extern "C" {
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, const SECURITY_ATTRIBUTES* security,
                   DWORD disposition, DWORD flags, HANDLE templateFile);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, void* overlapped);
BOOL WriteFile(HANDLE file, LPCVOID data, DWORD size, LPDWORD written, void* overlapped);
BOOL FlushFileBuffers(HANDLE file);
BOOL CloseHandle(HANDLE handle);
BOOL FindClose(HANDLE find);
BOOL DeleteFileW(LPCWSTR path);
BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
BOOL CreateDirectoryW(LPCWSTR path, const SECURITY_ATTRIBUTES* security);
DWORD GetFileAttributesW(LPCWSTR path);
UINT GetDriveTypeW(LPCWSTR root);
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data);
BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data);
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size);

DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR file);
DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer,
                               DWORD size, LPCWSTR file);
UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int fallback, LPCWSTR file);
BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR text, LPCWSTR file);
}

// Windows and memory shared between processes.
using HWND = struct HWND__*;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
inline constexpr UINT WM_USER = 0x400;
inline constexpr DWORD PAGE_READWRITE = 4;
inline constexpr DWORD FILE_MAP_ALL_ACCESS = 0xF001F;
inline constexpr DWORD MEM_COMMIT = 0x1000;
inline constexpr DWORD MEM_MAPPED = 0x40000;

struct MEMORY_BASIC_INFORMATION {
  PVOID BaseAddress;
  PVOID AllocationBase;
  DWORD AllocationProtect;
  SIZE_T RegionSize;
  DWORD State;
  DWORD Protect;
  DWORD Type;
};
using PMEMORY_BASIC_INFORMATION = MEMORY_BASIC_INFORMATION*;

extern "C" {
HWND FindWindowW(LPCWSTR className, LPCWSTR title);
LRESULT SendMessageW(HWND window, UINT message, WPARAM first, LPARAM second);
HANDLE CreateFileMappingW(HANDLE file, const SECURITY_ATTRIBUTES* security, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCWSTR name);
LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                     std::size_t size);
BOOL FlushViewOfFile(LPCVOID view, std::size_t size);
BOOL UnmapViewOfFile(LPCVOID view);
SIZE_T VirtualQuery(LPCVOID memory, PMEMORY_BASIC_INFORMATION region, SIZE_T size);
}

// Programs.
using HINSTANCE = struct HINSTANCE__*;
using INT = int;
using INT_PTR = std::intptr_t;
inline constexpr INT SW_SHOWNORMAL = 1;
inline constexpr DWORD PROCESS_TERMINATE = 1;
inline constexpr DWORD STARTF_USESHOWWINDOW = 1;

struct STARTUPINFOW {
  DWORD cb;
  LPWSTR lpReserved;
  LPWSTR lpDesktop;
  LPWSTR lpTitle;
  DWORD dwX;
  DWORD dwY;
  DWORD dwXSize;
  DWORD dwYSize;
  DWORD dwXCountChars;
  DWORD dwYCountChars;
  DWORD dwFillAttribute;
  DWORD dwFlags;
  WORD wShowWindow;
  WORD cbReserved2;
  LPBYTE lpReserved2;
  HANDLE hStdInput;
  HANDLE hStdOutput;
  HANDLE hStdError;
};

struct PROCESS_INFORMATION {
  HANDLE hProcess;
  HANDLE hThread;
  DWORD dwProcessId;
  DWORD dwThreadId;
};

extern "C" {
BOOL CreateProcessW(LPCWSTR program, LPWSTR commandLine, const SECURITY_ATTRIBUTES* process,
                    const SECURITY_ATTRIBUTES* thread, BOOL inherits, DWORD flags,
                    LPVOID environment, LPCWSTR folder, const STARTUPINFOW* startup,
                    PROCESS_INFORMATION* started);
HANDLE OpenProcess(DWORD access, BOOL inherit, DWORD id);
BOOL TerminateProcess(HANDLE process, UINT exitCode);
HWND GetDesktopWindow();
}

// Process, environment, time and text.
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr DWORD MB_ERR_INVALID_CHARS = 8;
inline constexpr UINT LPTR = 0x40;

inline constexpr int CSTR_LESS_THAN = 1;
inline constexpr int CSTR_EQUAL = 2;
inline constexpr int CSTR_GREATER_THAN = 3;

extern "C" {
DWORD GetLastError();
void SetLastError(DWORD code);
HANDLE GetCurrentProcess();
BOOL IsWow64Process(HANDLE process, PBOOL wow64);
UINT GetACP();
void GetLocalTime(SYSTEMTIME* time);
ULONGLONG GetTickCount64();
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size);
DWORD ExpandEnvironmentStringsW(LPCWSTR source, LPWSTR buffer, DWORD size);
HLOCAL LocalAlloc(UINT flags, SIZE_T size);
HLOCAL LocalFree(HLOCAL memory);
DWORD CharLowerBuffW(LPWSTR text, DWORD size);
DWORD CharUpperBuffW(LPWSTR text, DWORD size);
int CompareStringOrdinal(LPCWSTR first, int firstLength, LPCWSTR second, int secondLength,
                         BOOL ignoresCase);
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide,
                        int wideSize);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int wideLength, LPSTR text,
                        int size, LPCSTR defaultCharacter, LPBOOL usedDefault);
}

#endif
