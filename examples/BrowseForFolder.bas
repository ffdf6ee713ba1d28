Attribute VB_Name = "BrowseForFolder"
Option Explicit

' Asks for a folder, with one selected at the beginning. All declarations come from the bundled
' library, unchanged.

Private Const BFFM_INITIALIZED As Long = 1
Private Const WM_USER As Long = &H400
Private Const BFFM_SETSELECTIONA As Long = WM_USER + 102
Private Const BFFM_SETSELECTION As Long = BFFM_SETSELECTIONA
Private Const BIF_NEWDIALOGSTYLE As Long = &H40
Private Const BIF_RETURNONLYFSDIRS As Long = &H1
Private Const MAX_PATH As Long = 260
Private Declare Sub CoTaskMemFree Lib "ole32" (ByVal pv As Long)
Private Declare Function SendMessage Lib "user32" Alias "SendMessageA" (ByVal hWnd As Long, ByVal Msg As Long, ByVal wParam As Long, lParam As Any) As Long
Private Declare Function SHBrowseForFolder Lib "shell32" Alias "SHBrowseForFolderA" (lpbi As BROWSEINFO) As Long
Private Declare Function SHGetPathFromIDList Lib "shell32" Alias "SHGetPathFromIDListA" (ByVal pidl As Long, ByVal pszPath As String) As Long

Private Type BROWSEINFO
			'record: BROWSEINFOA
	hwndOwner As Long
	pidlRoot As Long
	pszDisplayName As String
	lpszTitle As String
	ulFlags As Long
	lpfn As Long
	lParam As Long
	iImage As Long
End Type

' The folder's path, empty when the dialog was cancelled or the choice is no folder of a disk.
Public Function AskFolder(ByVal Owner As Long, ByVal Title As String, _
                          ByVal FirstFolder As String) As String
    Dim Browse As BROWSEINFO
    Dim Start() As Byte
    Dim ItemList As Long
    Dim Path As String

    Start = StrConv(FirstFolder & vbNullChar, vbFromUnicode)
    Browse.hwndOwner = Owner
    Browse.pszDisplayName = String$(MAX_PATH, vbNullChar)
    Browse.lpszTitle = Title
    Browse.ulFlags = BIF_RETURNONLYFSDIRS Or BIF_NEWDIALOGSTYLE
    Browse.lpfn = AddressValue(AddressOf OnBrowse)
    Browse.lParam = VarPtr(Start(0))

    ItemList = SHBrowseForFolder(Browse)
    If ItemList = 0 Then Exit Function
    Path = String$(MAX_PATH, vbNullChar)
    If SHGetPathFromIDList(ItemList, Path) <> 0 Then
        AskFolder = Left$(Path, InStr(Path, vbNullChar) - 1)
    End If
    CoTaskMemFree ItemList
End Function

' Called by the dialog; Data is the address of the first folder's path.
Private Function OnBrowse(ByVal hWnd As Long, ByVal Message As Long, ByVal lParam As Long, _
                          ByVal Data As Long) As Long
    If Message = BFFM_INITIALIZED Then SendMessage hWnd, BFFM_SETSELECTION, 1, ByVal Data
End Function

Private Function AddressValue(ByVal Address As Long) As Long
    AddressValue = Address
End Function
