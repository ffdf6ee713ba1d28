Attribute VB_Name = "TrayIcon"
Option Explicit

' Ikona programu na paneli úloh. The declarations that this module needs are
' inserted above.

Private mVisible As Boolean
Private mHandle As Long

' Shows the icon of a form beside the clock, with a tip.
Public Sub ShowTrayIcon(Owner As Form, ByVal Tip As String)
    Dim Data As NOTIFYICONDATA

    mHandle = Owner.hWnd
    Data = IconData()
    Data.uFlags = NIF_ALL
    Data.uCallbackMessage = WM_TRAYNOTIFY
    Data.hIcon = Owner.Icon
    Data.szTip = Tip & vbNullChar
    mVisible = Shell_NotifyIcon(NIM_ADD, Data) <> 0
End Sub

Public Sub HideTrayIcon()
    If Not mVisible Then Exit Sub
    mVisible = Shell_NotifyIcon(NIM_DELETE, IconData()) = 0
End Sub

' Brings the form back to where it stood before it was hidden.
Public Sub RestoreOwner()
    Dim Place As WINDOWPLACEMENT

    Place.Length = Len(Place)
    If GetWindowPlacement(mHandle, Place) = 0 Then Exit Sub
    Place.showCmd = SW_SHOWNORMAL
    SetWindowPlacement mHandle, Place
    SetForegroundWindow mHandle
End Sub

Private Function IconData() As NOTIFYICONDATA
    IconData.cbSize = Len(IconData)
    IconData.hWnd = mHandle
    IconData.uID = 1
End Function
