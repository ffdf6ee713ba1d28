Attribute VB_Name = "FaultyDeclares"
Option Explicit

' Declarations as old programs have them. Each has a fault that "declarium-cli check" finds.

Private Declare Sub Sleep Lib "kernel32" (dwMilliseconds As Long)
Private Declare Function FindWindow Lib "user32" (ByVal lpClassName As String, ByVal lpWindowName As String) As Long
Private Declare Function IsWindow Lib "user32" (ByVal hWnd As Long) As Boolean
Private Declare Function GetWindowText Lib "user32" Alias "GetWindowTextA" (ByVal hWnd As Long, ByVal lpString As String) As Long

Private Const LOW_WORD As Long = &HFFFF

Public Sub WaitForWindow(ByVal Title As String)
    Dim hWnd As Long
    Dim Text As String * 256
    Do
        Sleep 100
        hWnd = FindWindow(vbNullString, Title)
    Loop Until IsWindow(hWnd)
    GetWindowText hWnd, Text
    Debug.Print Text, hWnd And LOW_WORD
End Sub
