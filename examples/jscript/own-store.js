// The control on a store that the script itself is: cscript //nologo own-store.js
// What has a default member for the control is a function here: called without an argument it gives the
// full text, with one an entry. Properties that are read are functions too, which every host of scripts
// calls. No object of this language can have its default member assigned, so this store is one to
// consult: the control writes nothing to it.
var ATTRIBUTE_MARK = "\u00FE";
var VALUE_MARK = "\u00FD";
var NOT_FOUND = 0x8004000B | 0;
var CONSULTATION = 1;
var records = {};

function storeRecord(place) {
  var known = records[place] !== undefined;
  var record = function () { return known ? records[place] : ""; };
  record.Status = function () { return known ? 0 : NOT_FOUND; };
  record.DBWrite = function () { throw new Error("this store is for consultation"); };
  return record;
}

var store = {
  OpenFile: function (name) {
    return {
      ReadRecord: function (id) { return storeRecord(name + "/" + id); },
      DeleteRecord: function (id) { delete records[name + "/" + id]; }
    };
  },

  // A request is a sentence, the file that it selects from, and the columns that are wanted. This store
  // has no conditions, and gives all in the order in which they came.
  ExecuteSentence: function (request) {
    var part = request.split(ATTRIBUTE_MARK);
    var columns = part[2].split(" ");
    var answer = [];
    for (var place in records) {
      if (place.indexOf(part[1] + "/") !== 0) continue;
      var line = [];
      for (var i = 0; i < columns.length; ++i) {
        line.push(columns[i] === "0" ? place.substr(part[1].length + 1) : attribute(place, columns[i]));
      }
      answer.push(line.join(VALUE_MARK));
    }
    return answer.join(ATTRIBUTE_MARK);
  }
};

function rights(name) {
  return { Level: function () { return CONSULTATION; } };
}

function attribute(place, number) { return records[place].split(ATTRIBUTE_MARK)[number - 1] || ""; }

// A record from an object that has attributes by their numbers.
function fill(place, attributes) {
  var all = [];
  for (var i = 1; i <= 70; ++i) all.push(attributes[i] || "");
  records[place] = all.join(ATTRIBUTE_MARK);
}

fill("ASSOCIATION/010", { 1: "AIDE DU VAL" });
fill("ACTIVITES/010P01", { 1: "Aide menagere", 2: "010", 12: "P", 13: "SAAD" });
fill("PARAMBORDORGCHG/1", { 1: "Nom", 2: "30" });
fill("ORGPRISECHARGE/001", { 1: "CD01", 2: "Conseil departemental", 17: "M", 18: "P", 19: "3", 20: "0",
  24: "H", 25: "21186", 26: "2000", 27: "2500", 28: "1500", 41: "M", 42: "0", 44: "0", 45: "I", 46: "010",
  47: "010P01", 48: "1", 50: "0", 51: "0", 53: "0", 55: "0", 57: "0", 61: "1" });

var control = new ActiveXObject("Tessaline.Ctr_OrgPriseCharge");
control.TheDatabase = store;
control.DroitsUtilisateur = rights;
control.Init();
var accepted = control.Verif_Ong1() && control.Verif_Ong2() && control.Verif_Ong3() &&
    control.Verif_Ong4() && control.Verif_Ong5() && control.Verif_Ong6();
if (accepted) WScript.Echo("all pages accept it");
try {
  control.Ecrire_Donnees();
} catch (failure) {
  WScript.Echo("saving is refused: " + (failure.number >>> 0).toString(16));
}
