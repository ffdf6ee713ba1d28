Attribute VB_Name = "Windows"
Option Explicit

Private Const MAX_PATH = 260
Private Const SW_HIDE = 5

' The place of a window on the screen.
Private Type RECT
  Left As Long
  Top As Long
  Right As Long
  Bottom As Long
End Type

Private Declare Function GetWindowRect Lib "user32" (ByVal hWnd As Long, lpRect As RECT) As Long
Private Declare Function GetWindowText Lib "user32" Alias "GetWindowTextA" (ByVal hWnd As Long, ByVal lpString As String, ByVal cch As Long) As Long
Private Declare Function ShowWindow Lib "user32" (ByVal hWnd As Long, ByVal nCmdShow As Long) As Long

Public Function WindowCaption(ByVal Window As Long) As String
  Dim Buffer As String * MAX_PATH
  WindowCaption = Left$(Buffer, GetWindowText(Window, Buffer, MAX_PATH))
End Function

Public Sub HideWindow(ByVal Window As Long)
  ShowWindow Window, SW_HIDE
End Sub
