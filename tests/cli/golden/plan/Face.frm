VERSION 5.00
Begin VB.Form Face 
   Caption         =   "Face"
   Begin VB.CommandButton Command1 
      Caption         =   "Sleep"
   End
   Begin VB.Timer CLASH 
   End
End
Attribute VB_Name = "Face"
Attribute VB_PredeclaredId = True
Option Explicit
Private Sub Command1_Click()
    Command1.Left = Left + Width
    Caption = Name & Timer & Date
    Sleep 5: Refresh
    CLASH.Enabled = True
End Sub
