Attribute VB_Name = "Main"
Option Explicit

' Constants of windows
Private Const SW_SHOW = &H5 ' the same
Private Const GWL_STYLE = 16
Private Buffer(MAX_PATH) As Byte

Public Enum Clashing
    CLASH = 7
End Enum

#If Logging Then
Private Const WM_USER = 1024
#End If
#If Tracing Then
Private Const A_NEW = 1
#End If

Private Type Holder
    Path As String * LIMIT
End Type

' Starts the program.
Public Sub Main()
    Dim Start As Long, Area As RECT, Found As FIND_DATA
    Start = GetTickCount
    Sleep SW_SHOW
    FindFirstFile "*", Found
    ShowAll Command1
End Sub
