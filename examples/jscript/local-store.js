// The control on the local store, without any window: cscript //nologo local-store.js STORE
// The body of a store that holds a single one is checked page by page, as the user's OK would, and saved.
// What a page refuses is told in the control's own message box.
var FULL_RIGHTS = 2;

var client = new ActiveXObject("TessalineStore.Client");
var database = client.OpenDatabase(WScript.Arguments(0));
var rights = new ActiveXObject("TessalineStore.Rights");
rights.SetLevel("CONSULTATIONORGCHARGE", FULL_RIGHTS);

var control = new ActiveXObject("Tessaline.Ctr_OrgPriseCharge");
control.TheClient = client;
control.TheDatabase = database;
control.DroitsUtilisateur = rights;
control.Init();
// A store with one body has it loaded by now.
WScript.Echo("body: " + database.OpenFile("ORGPRISECHARGE").ReadRecord("001").Value(2));

var accepted = control.Verif_Ong1() && control.Verif_Ong2() && control.Verif_Ong3() &&
    control.Verif_Ong4() && control.Verif_Ong5() && control.Verif_Ong6();
if (accepted) {
  control.Ecrire_Donnees();
  WScript.Echo("all pages accept it, and it is saved");
}

control.W_Sortir = true;
if (control.W_Sortir) WScript.Echo("a window of the control would be closed now");

// A failure of the store comes as an exception, with the store's own code.
try {
  database.OpenFile("NOWHERE");
} catch (failure) {
  WScript.Echo("refused: " + (failure.number >>> 0).toString(16));
}
