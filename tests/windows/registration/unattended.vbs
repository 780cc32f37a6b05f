' A script without any window: it makes a store with one body, gives it to the control, and starts.
' The argument is the path of an empty store.

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

' A procedure of the control has been called: Err is what it left.
Sub Done(name, number, description)
  Hold name & ": " & Hex(number) & " " & description, number = 0
  Err.Clear
End Sub

' A record of one file, from pairs of an attribute and its text.
Sub Store(file, id, attributes)
  Dim made, i
  Set made = database.OpenFile(file).ReadRecord(id)
  For i = 0 To UBound(attributes) Step 2
    made.Value(attributes(i)) = attributes(i + 1)
  Next
  made.DBWrite
End Sub

Dim client, database, rights, control, record
Set client = CreateObject("TessalineStore.Client")
Set database = client.OpenDatabase(WScript.Arguments(0))
Set rights = CreateObject("TessalineStore.Rights")
rights.SetLevel "CONSULTATIONORGCHARGE", 2
Store "ASSOCIATION", "010", Array(1, "AIDE DU VAL")
Store "ACTIVITES", "010P01", Array(1, "Aide menagere", 2, "010", 12, "P", 13, "SAAD")
Store "ACTIVITES", "010P02", Array(1, "Garde de jour", 2, "010", 12, "P", 13, "SAAD")
Store "PARAMBORDORGCHG", "1", Array(1, "Nom", 2, "30")
Store "ORGPRISECHARGE", "001", Array(1, "CD01", 2, "Conseil departemental", 17, "M", 18, "P", _
  19, "3", 20, "0", 24, "H", 25, "21186", 26, "2000", _
  27, "2500", 28, "1500", 41, "M", 42, "0", 44, "0", 45, "I", 46, "010", 47, "010P02", 48, "1", 50, "0", 51, "0", _
  53, "0", 55, "0", 57, "0", 61, "1")
Store "ACCORD", "00001001", Array(1, "001", 5, "20821", 6, "30000", 10, "1800", 11, "20821", 12, "1", 13, "500")

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
Hold "Verif_Ong1 accepts: " & Hex(Err.Number), Err.Number = 0 And VarType(accepted) = vbBoolean And accepted
accepted = False
accepted = control.Verif_Ong2
Hold "Verif_Ong2 accepts: " & Hex(Err.Number), Err.Number = 0 And accepted
accepted = False
accepted = control.Verif_Ong3
Hold "Verif_Ong3 accepts: " & Hex(Err.Number), Err.Number = 0 And accepted
accepted = False
accepted = control.Verif_Ong4
Hold "Verif_Ong4 accepts: " & Hex(Err.Number), Err.Number = 0 And accepted
accepted = False
accepted = control.Verif_Ong5
Hold "Verif_Ong5 accepts: " & Hex(Err.Number), Err.Number = 0 And accepted
accepted = False
accepted = control.Verif_Ong6
Hold "Verif_Ong6 accepts: " & Hex(Err.Number), Err.Number = 0 And accepted
Err.Clear

' Shown and written again, the record stays as it was.
Dim before, after
Set record = database.OpenFile("ORGPRISECHARGE").ReadRecord("001")
before = record
control.Afficher_Ong2
Done "Afficher_Ong2", Err.Number, Err.Description
control.Afficher_Ong5
Done "Afficher_Ong5", Err.Number, Err.Description
control.Afficher_Ong6
Done "Afficher_Ong6", Err.Number, Err.Description
control.Remplir_Entite
Done "Remplir_Entite", Err.Number, Err.Description
control.Long_ListeParam
Done "Long_ListeParam", Err.Number, Err.Description
control.RechercheAccord
Done "RechercheAccord", Err.Number, Err.Description
' Nothing is selected, so nothing moves.
control.Passage_A_Droite
Done "Passage_A_Droite", Err.Number, Err.Description
control.Passage_A_Gauche
Done "Passage_A_Gauche", Err.Number, Err.Description
control.Passage_A_Droite_Tri
Done "Passage_A_Droite_Tri", Err.Number, Err.Description
control.Passage_A_Gauche_Tri
Done "Passage_A_Gauche_Tri", Err.Number, Err.Description
control.Ecrire_Ong2
Done "Ecrire_Ong2", Err.Number, Err.Description
control.Ecrire_Ong5
Done "Ecrire_Ong5", Err.Number, Err.Description
control.Ecrire_Ong6
Done "Ecrire_Ong6", Err.Number, Err.Description
control.Ecrire_Donnees
Done "Ecrire_Donnees", Err.Number, Err.Description
Set record = Nothing
Set record = database.OpenFile("ORGPRISECHARGE").ReadRecord("001")
after = record
Hold "the record is as it was", before = after And Len(after) > 0

' The activities of the entity are listed anew: none is covered until some are moved over.
control.Remplir_OrgPriseChg
Done "Remplir_OrgPriseChg", Err.Number, Err.Description
control.Remplir_Liste_Activite
Done "Remplir_Liste_Activite", Err.Number, Err.Description
control.Ecrire_Donnees
Done "Ecrire_Donnees of no activity", Err.Number, Err.Description
Set record = Nothing
Set record = database.OpenFile("ORGPRISECHARGE").ReadRecord("001")
Hold "no activity is covered", record.Value(47) = "" And record.Value(46) = "010"
Set record = Nothing
control.Remplir_OrgPriseChg
Done "Remplir_OrgPriseChg again", Err.Number, Err.Description
Err.Clear

' The rate on screen enters the agreement; no letter has been asked for.
control.Recup_AccordTauxRemb
Done "Recup_AccordTauxRemb", Err.Number, Err.Description
Set record = database.OpenFile("ACCORD").ReadRecord("00001001")
Hold "the agreement has a new period", record.DCount(11) = 2 And record.Value(11, 1) = "21186" _
  And record.Value(10, 1) = "2000" And record.Value(13, 1) = "500"
Set record = Nothing
control.Recup_Accord
Done "Recup_Accord", Err.Number, Err.Description
control.Impression_ModifAccord
Hold "Impression_ModifAccord has no letter: " & Hex(Err.Number), Err.Number <> 0
Err.Clear

Dim index
index = 0
control.AjoutLists index
Hold "AjoutLists takes a variable, but no row without a date: " & Hex(Err.Number), Err.Number <> 0 _
  And index = 0
Err.Clear
control.Afficher_Ong3
Done "Afficher_Ong3", Err.Number, Err.Description

control.W_Sortir = True
Hold "W_Sortir is assigned", control.W_Sortir = True And Err.Number = 0
Err.Clear

' The control writes the record that it has loaded.
control.Ecrire_Donnees
Done "Ecrire_Donnees at the end", Err.Number, Err.Description
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
