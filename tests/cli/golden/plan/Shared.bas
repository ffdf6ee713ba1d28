Attribute VB_Name = "Shared"
Public Declare Sub Sleep Lib "KERNEL32.DLL" (ByVal ms As Long)
Private Const MAX_PATH = 99
Public Sub ShowAll(ByVal Kind As Long)
    Dim GWL_STYLE As Long
    GWL_STYLE = Kind + MAX_PATH
End Sub
