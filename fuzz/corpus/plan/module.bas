Option Explicit

Private Const A = 1
Private Type T
	a(2) As Long
End Type

' Says it.
Sub Main()
	D 1
End Sub
