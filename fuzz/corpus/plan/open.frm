VERSION 5.00
Begin VB.Form F
  Caption = "x"
Attribute VB_Name = "F"
Sub S()
End Sub
