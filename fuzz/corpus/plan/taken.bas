Enum E
A = 1
B
End Enum
Dim T As _
Long: Const X = 1
Function D()
End Function