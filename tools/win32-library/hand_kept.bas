' Procedures that neither the headers nor the metadata have and programs need, as the library holds
' them. The comment above a group names its source.

' The library's own VarPtr, told that its argument is an array. Microsoft, Q199824, "How To Get the
' Address of Variables in Visual Basic". Programs call it by either name.
Declare Function ArrPtr Lib "msvbvm60" Alias "VarPtr" (Ptr() As Any) As Long
Declare Function VarPtrArray Lib "msvbvm60" Alias "VarPtr" (Var() As Any) As Long

' Exported by msvbvm60.dll and not documented; declared so by the programs that use them. Each reads
' or writes as many bytes as its name says.
Declare Sub GetMem1 Lib "msvbvm60" (ByVal Addr As Long, RetVal As Byte)
Declare Sub GetMem2 Lib "msvbvm60" (ByVal Addr As Long, RetVal As Integer)
Declare Sub GetMem4 Lib "msvbvm60" (ByVal Addr As Long, RetVal As Long)
Declare Sub GetMem8 Lib "msvbvm60" (ByVal Addr As Long, RetVal As Currency)
Declare Sub PutMem1 Lib "msvbvm60" (ByVal Addr As Long, ByVal NewVal As Byte)
Declare Sub PutMem2 Lib "msvbvm60" (ByVal Addr As Long, ByVal NewVal As Integer)
Declare Sub PutMem4 Lib "msvbvm60" (ByVal Addr As Long, ByVal NewVal As Long)
Declare Sub PutMem8 Lib "msvbvm60" (ByVal Addr As Long, ByVal NewVal As Currency)

' The same: what the compiler calls for Set, with and without a reference of its own.
Declare Function vbaObjSet Lib "msvbvm60" Alias "__vbaObjSet" (dstObject As Any, ByVal srcObjPtr As Long) As Long
Declare Function vbaObjSetAddref Lib "msvbvm60" Alias "__vbaObjSetAddref" (dstObject As Any, ByVal srcObjPtr As Long) As Long

' Microsoft Learn, RtlGetVersion (wdm.h). It says the version that GetVersionEx keeps to itself.
Declare Function RtlGetVersion Lib "ntdll" (lpVersionInformation As OSVERSIONINFOEXW) As Long

' Microsoft Learn, RtlCompareUnicodeString (wdm.h).
Declare Function RtlCompareUnicodeString Lib "ntdll" (String1 As UNICODE_STRING, String2 As UNICODE_STRING, ByVal CaseInSensitive As Byte) As Long

' Microsoft Learn, "DevNotes": NtOpenDirectoryObject, NtQueryDirectoryObject,
' NtOpenSymbolicLinkObject, NtQuerySymbolicLinkObject.
Declare Function NtOpenDirectoryObject Lib "ntdll" (DirectoryHandle As Long, ByVal DesiredAccess As Long, ObjectAttributes As OBJECT_ATTRIBUTES) As Long
Declare Function NtQueryDirectoryObject Lib "ntdll" (ByVal DirectoryHandle As Long, Buffer As Any, ByVal Length As Long, ByVal ReturnSingleEntry As Byte, ByVal RestartScan As Byte, Context As Long, ReturnLength As Any) As Long
Declare Function NtOpenSymbolicLinkObject Lib "ntdll" (LinkHandle As Long, ByVal DesiredAccess As Long, ObjectAttributes As OBJECT_ATTRIBUTES) As Long
Declare Function NtQuerySymbolicLinkObject Lib "ntdll" (ByVal LinkHandle As Long, LinkTarget As UNICODE_STRING, ReturnedLength As Any) As Long

' Microsoft Learn, NtQueryDirectoryFile (ntifs.h).
Declare Function NtQueryDirectoryFile Lib "ntdll" (ByVal FileHandle As Long, ByVal EventHandle As Long, ByVal ApcRoutine As Long, ByVal ApcContext As Long, IoStatusBlock As IO_STATUS_BLOCK, FileInformation As Any, ByVal Length As Long, ByVal FileInformationClass As Long, ByVal ReturnSingleEntry As Byte, FileName As Any, ByVal RestartScan As Byte) As Long

' Exported by shell32.dll by number alone: ExitWindowsDialog and RunFileDlg, which Wine's shell32 has
' too. Declared by programs under these names; texts are wide and passed with StrPtr.
Declare Sub SHShutDownDialog Lib "shell32" Alias "#60" (ByVal hwndOwner As Long)
Declare Sub SHRunDialog Lib "shell32" Alias "#61" (ByVal hwndOwner As Long, ByVal hIcon As Long, ByVal lpszDirectory As Long, ByVal lpszTitle As Long, ByVal lpszDescription As Long, ByVal uFlags As Long)
