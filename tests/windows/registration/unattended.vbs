' A script without any window: it makes a store with one body, gives it to the control, and starts.
' The argument is the path of an empty store.
Const NotBuilt = 445  ' the engine's number for E_NOTIMPL

Dim passed, failed
passed = 0
failed = 0

Sub Hold(what, holds)
  If holds Then
    passed = passed + 1
  Else
    failed = failed + 1
    WScript.Echo "FAILED " & what
  End If
End Sub

Dim client, database, rights, control, record
Set client = CreateObject("TessalineStore.Client")
Set database = client.OpenDatabase(WScript.Arguments(0))
Set rights = CreateObject("TessalineStore.Rights")
rights.SetLevel "CONSULTATIONORGCHARGE", 2
Set record = database.OpenFile("ORGPRISECHARGE").ReadRecord("001")
record.Value(1) = "CD01"
record.Value(2) = "Conseil departemental"
record.DBWrite

Set control = CreateObject("Tessaline.Ctr_OrgPriseCharge")
Hold "W_Sortir is false at the start", control.W_Sortir = False

On Error Resume Next
control.Init
Hold "Init before its objects fails: " & Hex(Err.Number), Err.Number <> 0
Hold "and says why", Len(Err.Description) > 0
Err.Clear

Set control.TheClient = client
Set control.TheDatabase = database
Set control.DroitsUtilisateur = rights
Hold "the objects are taken: " & Err.Description, Err.Number = 0
Err.Clear

control.Init
Hold "Init: " & Hex(Err.Number) & " " & Err.Description, Err.Number = 0
Err.Clear
Dim accepted
accepted = control.Verif_Ong1
Hold "Verif_Ong1 answers: " & Hex(Err.Number), Err.Number = 0 And VarType(accepted) = vbBoolean
Err.Clear

Dim index
index = 0
control.AjoutLists index
Hold "AjoutLists takes a variable: " & Hex(Err.Number) & " " & Err.Description, _
  Err.Number = 0 Or Err.Number = NotBuilt
Err.Clear

control.W_Sortir = True
Hold "W_Sortir is assigned", control.W_Sortir = True And Err.Number = 0
Err.Clear

' The control writes the record that it has loaded.
control.Ecrire_Donnees
Err.Clear
control.Vider_Donnees
Hold "Vider_Donnees: " & Hex(Err.Number) & " " & Err.Description, Err.Number = 0
Err.Clear
Set record = Nothing
Set record = database.OpenFile("ORGPRISECHARGE").ReadRecord("001")
Hold "the record is whole", record.Value(1) = "CD01" And record.Value(2) = "Conseil departemental"

' A store object that cannot open files: the failure and its text reach the script.
Class EmptyDatabase
End Class
Dim other
Set other = CreateObject("Tessaline.Ctr_OrgPriseCharge")
Set other.TheDatabase = New EmptyDatabase
Set other.DroitsUtilisateur = rights
other.Init
Hold "a store without files is a failure: " & Hex(Err.Number), Err.Number <> 0
Hold "its text names what failed: " & Err.Description, InStr(Err.Description, "OpenFile") > 0
Err.Clear
Set other = Nothing
Set control = Nothing
Hold "the control lets go of everything", Err.Number = 0

WScript.Echo passed & " passed, " & failed & " failed"
