Attribute VB_Name = "Subclassing"
Option Explicit

' Keeps a form from becoming too small, by subclassing its window. All declarations come from the
' bundled library, unchanged. Call LimitSize from Form_Load; the window lets go by itself.

Private Const GWL_WNDPROC As Long = -4
Private Const WM_GETMINMAXINFO As Long = &H24
Private Const WM_NCDESTROY As Long = &H82
Private Declare Function CallWindowProc Lib "user32" Alias "CallWindowProcA" (ByVal lpPrevWndFunc As Long, ByVal hWnd As Long, ByVal Msg As Long, ByVal wParam As Long, ByVal lParam As Long) As Long
Private Declare Sub CopyMemory Lib "kernel32" Alias "RtlMoveMemory" (Destination As Any, Source As Any, ByVal Length As Long)
Private Declare Function GetProp Lib "user32" Alias "GetPropA" (ByVal hWnd As Long, ByVal lpString As String) As Long
Private Declare Function RemoveProp Lib "user32" Alias "RemovePropA" (ByVal hWnd As Long, ByVal lpString As String) As Long
Private Declare Function SetProp Lib "user32" Alias "SetPropA" (ByVal hWnd As Long, ByVal lpString As String, ByVal hData As Long) As Long
Private Declare Function SetWindowLong Lib "user32" Alias "SetWindowLongA" (ByVal hWnd As Long, ByVal nIndex As Long, ByVal dwNewLong As Long) As Long

Private Type POINTAPI
			'record: POINT
	x As Long
	y As Long
End Type

Private Type MINMAXINFO
	ptReserved As POINTAPI
	ptMaxSize As POINTAPI
	ptMaxPosition As POINTAPI
	ptMinTrackSize As POINTAPI
	ptMaxTrackSize As POINTAPI
End Type

Private Const OLD_PROCEDURE = "LimitSize.OldProcedure"
Private Const LEAST_WIDTH = "LimitSize.Width"
Private Const LEAST_HEIGHT = "LimitSize.Height"

' Width and height are in pixels, borders included.
Public Sub LimitSize(ByVal hWnd As Long, ByVal LeastWidth As Long, ByVal LeastHeight As Long)
    SetProp hWnd, LEAST_WIDTH, LeastWidth
    SetProp hWnd, LEAST_HEIGHT, LeastHeight
    If GetProp(hWnd, OLD_PROCEDURE) = 0 Then
        SetProp hWnd, OLD_PROCEDURE, SetWindowLong(hWnd, GWL_WNDPROC, AddressOf OnMessage)
    End If
End Sub

Private Function OnMessage(ByVal hWnd As Long, ByVal Message As Long, ByVal wParam As Long, _
                           ByVal lParam As Long) As Long
    Dim OldProcedure As Long

    OldProcedure = GetProp(hWnd, OLD_PROCEDURE)
    If Message = WM_NCDESTROY Then LetGo hWnd, OldProcedure
    OnMessage = CallWindowProc(OldProcedure, hWnd, Message, wParam, lParam)
    If Message = WM_GETMINMAXINFO Then SetLeastSize hWnd, lParam
End Function

Private Sub LetGo(ByVal hWnd As Long, ByVal OldProcedure As Long)
    SetWindowLong hWnd, GWL_WNDPROC, OldProcedure
    RemoveProp hWnd, OLD_PROCEDURE
    RemoveProp hWnd, LEAST_WIDTH
    RemoveProp hWnd, LEAST_HEIGHT
End Sub

Private Sub SetLeastSize(ByVal hWnd As Long, ByVal Address As Long)
    Dim Limits As MINMAXINFO

    CopyMemory Limits, ByVal Address, Len(Limits)
    Limits.ptMinTrackSize.x = GetProp(hWnd, LEAST_WIDTH)
    Limits.ptMinTrackSize.y = GetProp(hWnd, LEAST_HEIGHT)
    CopyMemory ByVal Address, Limits, Len(Limits)
End Sub
