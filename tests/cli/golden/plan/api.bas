Const A_NEW = 1
Const SW_SHOW = 5
Const GWL_STYLE = -16
Const MAX_PATH = 260
Const WM_USER = &H400
Const LIMIT = WM_USER + MAX_PATH
Const CLASH = 3
Const Caption = 4
Const Command1 = 5
Declare Function GetTickCount Lib "kernel32" () As Long
Declare Function FindFirstFile Lib "kernel32" Alias "FindFirstFileA" (ByVal lpFileName As String, lpFindFileData As FIND_DATA) As Long
Declare Sub Sleep Lib "kernel32" (ByVal dwMilliseconds As Long)
Type FILETIME
    dwLowDateTime As Long
    dwHighDateTime As Long
End Type
Type FIND_DATA
    dwFileAttributes As Long
    ftCreationTime As FILETIME
    cFileName As String * MAX_PATH
End Type
Type RECT
    Left As Long
    Top As Long
    Right As Long
    Bottom As Long
End Type
