Attribute VB_Name = "Start"
Option Explicit

Public Sub Main()
    FlashWindows "Notepad"
End Sub
