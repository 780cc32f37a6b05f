' The control on the local store, without any window: cscript //nologo local-store.vbs STORE
' The body of a store that holds a single one is checked page by page, as the user's OK would, and saved.
' What a page refuses is told in the control's own message box.
Option Explicit
Const FullRights = 2

Dim client, database, rights, control
Set client = CreateObject("TessalineStore.Client")
Set database = client.OpenDatabase(WScript.Arguments(0))
Set rights = CreateObject("TessalineStore.Rights")
rights.SetLevel "CONSULTATIONORGCHARGE", FullRights

Set control = CreateObject("Tessaline.Ctr_OrgPriseCharge")
Set control.TheClient = client
Set control.TheDatabase = database
Set control.DroitsUtilisateur = rights
control.Init
' A store with one body has it loaded by now.
WScript.Echo "body: " & database.OpenFile("ORGPRISECHARGE").ReadRecord("001").Value(2)

Dim accepted
accepted = control.Verif_Ong1 And control.Verif_Ong2 And control.Verif_Ong3 And _
  control.Verif_Ong4 And control.Verif_Ong5 And control.Verif_Ong6
If accepted Then
  control.Ecrire_Donnees
  WScript.Echo "all pages accept it, and it is saved"
End If

control.W_Sortir = True
If control.W_Sortir Then WScript.Echo "a window of the control would be closed now"

' A failure of the store comes as an error of the script, with the store's own code.
On Error Resume Next
database.OpenFile "NOWHERE"
WScript.Echo "refused: " & Hex(Err.Number)
