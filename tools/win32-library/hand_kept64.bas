' The procedures of hand_kept.bas that 64-bit Windows has too, as VBA declares them there. msvbvm60
' exists in 32 bits only.

Declare PtrSafe Function RtlGetVersion Lib "ntdll" (lpVersionInformation As OSVERSIONINFOEXW) As Long
Declare PtrSafe Function RtlCompareUnicodeString Lib "ntdll" (String1 As UNICODE_STRING, String2 As UNICODE_STRING, ByVal CaseInSensitive As Byte) As Long
Declare PtrSafe Function NtOpenDirectoryObject Lib "ntdll" (DirectoryHandle As LongPtr, ByVal DesiredAccess As Long, ObjectAttributes As OBJECT_ATTRIBUTES) As Long
Declare PtrSafe Function NtQueryDirectoryObject Lib "ntdll" (ByVal DirectoryHandle As LongPtr, Buffer As Any, ByVal Length As Long, ByVal ReturnSingleEntry As Byte, ByVal RestartScan As Byte, Context As Long, ReturnLength As Any) As Long
Declare PtrSafe Function NtOpenSymbolicLinkObject Lib "ntdll" (LinkHandle As LongPtr, ByVal DesiredAccess As Long, ObjectAttributes As OBJECT_ATTRIBUTES) As Long
Declare PtrSafe Function NtQuerySymbolicLinkObject Lib "ntdll" (ByVal LinkHandle As LongPtr, LinkTarget As UNICODE_STRING, ReturnedLength As Any) As Long
Declare PtrSafe Function NtQueryDirectoryFile Lib "ntdll" (ByVal FileHandle As LongPtr, ByVal EventHandle As LongPtr, ByVal ApcRoutine As LongPtr, ByVal ApcContext As LongPtr, IoStatusBlock As IO_STATUS_BLOCK, FileInformation As Any, ByVal Length As Long, ByVal FileInformationClass As Long, ByVal ReturnSingleEntry As Byte, FileName As Any, ByVal RestartScan As Byte) As Long
Declare PtrSafe Sub SHShutDownDialog Lib "shell32" Alias "#60" (ByVal hwndOwner As LongPtr)
Declare PtrSafe Sub SHRunDialog Lib "shell32" Alias "#61" (ByVal hwndOwner As LongPtr, ByVal hIcon As LongPtr, ByVal lpszDirectory As LongPtr, ByVal lpszTitle As LongPtr, ByVal lpszDescription As LongPtr, ByVal uFlags As Long)
