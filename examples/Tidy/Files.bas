Attribute VB_Name = "Files"
Option Explicit

Private Const MAX_PATH = 260
Private Const INVALID_HANDLE_VALUE = -1
Private Declare Function GetTempPath Lib "kernel32" Alias "GetTempPathA" (ByVal nBufferLength As Long, ByVal lpBuffer As String) As Long

Public Function TempFolder() As String
  Dim Buffer As String * MAX_PATH
  TempFolder = Left$(Buffer, GetTempPath(MAX_PATH, Buffer))
End Function
