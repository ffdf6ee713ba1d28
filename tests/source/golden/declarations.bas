Attribute VB_Name = "modShell"
Option Explicit

' Window states
Public Const SW_HIDE = 0
Public Const SW_SHOW As Long = 5 ' shows  the window
Private Const APP_NAME = "As Long, (String)"
Const MAX_PATH = 260
Const FLAGS = (SW_SHOW Or &H100) And Not SW_HIDE

Public Type RECT 'in pixels
    Left As Long
    Top As Long
    Right As Long
    Bottom As Long
End Type

Private Type WIN32_FIND_DATA
  dwFileAttributes As Long
  ' the names
  cFileName As String * MAX_PATH
  reserved(0 To 3) As Byte

  rc As RECT
End Type

Public Declare Function FindFirstFile Lib "kernel32" Alias "FindFirstFileA" _
    (ByVal lpFileName As String, lpFindFileData As WIN32_FIND_DATA) As Long
Declare Sub Sleep Lib "kernel32" ( ByVal dwMilliseconds As Long )
Private Declare Function GetWindowRect Lib "user32" (ByVal hwnd As Long, lpRect As RECT) As Long ' fills lpRect

Sub Main()
  Dim A As Long
End Sub
