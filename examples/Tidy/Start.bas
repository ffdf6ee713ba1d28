Attribute VB_Name = "Start"
Option Explicit

Private Declare Function GetForegroundWindow Lib "user32" () As Long

Public Sub Main()
  MsgBox WindowCaption(GetForegroundWindow) & ": " & TempFolder
  HideWindow GetForegroundWindow
End Sub
