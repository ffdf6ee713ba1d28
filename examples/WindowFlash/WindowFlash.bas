Attribute VB_Name = "WindowFlash"
' Makes every window with a given word in its title flash, and tells a tracing library about it. Written
' for 32 bits: the guide shows how it comes to 64-bit Office.
Option Explicit

Private Const GW_HWNDNEXT As Long = 2
Private Const FLASHW_ALL As Long = 3

Private Type FLASHWINFO
    cbSize As Long
    hwnd As Long
    dwFlags As Long
    uCount As Long
    dwTimeout As Long
End Type

Private Declare Function GetTopWindow Lib "user32" (ByVal hWnd As Long) As Long
Private Declare Function GetWindow Lib "user32" (ByVal hWnd As Long, ByVal uCmd As Long) As Long
Private Declare Function GetWindowText Lib "user32" Alias "GetWindowTextA" (ByVal hWnd As Long, ByVal lpString As String, ByVal nMaxCount As Long) As Long
Private Declare Function FlashWindowEx Lib "user32" (pfwi As FLASHWINFO) As Long
Private Declare Sub NoteWindow Lib "tracing.dll" (ByVal hTarget As Long, ByVal nReason As Long)

Public Sub FlashWindows(Word As String)
    Dim Window As Long, Text As String, Flash As FLASHWINFO
    Window = GetTopWindow(0)
    Do While Window <> 0
        Text = String$(260, vbNullChar)
        Text = Left$(Text, GetWindowText(Window, Text, Len(Text)))
        If InStr(1, Text, Word, vbTextCompare) > 0 Then
            Flash.cbSize = LenB(Flash)
            Flash.hwnd = Window
            Flash.dwFlags = FLASHW_ALL
            Flash.uCount = 3
            FlashWindowEx Flash
            NoteWindow Window, 1
        End If
        Window = GetWindow(Window, GW_HWNDNEXT)
    Loop
End Sub
