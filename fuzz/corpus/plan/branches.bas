Attribute VB_Name = "M"
#If VBA7 Then
Declare PtrSafe Sub D Lib "l" (x As T)
#Else
Declare Sub D Lib "l" (x As T)
#End If
Const A = 2
