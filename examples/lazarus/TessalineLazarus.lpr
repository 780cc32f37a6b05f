{ TessalineLazarus STORE [FORMS]: the control on forms of Lazarus, each with a control of its own. }
program TessalineLazarus;

{$mode objfpc}{$H+}

uses
  Interfaces, SysUtils, LazUTF8, Forms, BodyForm;

var
  Form: TBodyForm;
  Number: integer;

begin
  Application.Initialize;
  for Number := 1 to StrToIntDef(ParamStrUTF8(2), 1) do
  begin
    Form := TBodyForm.CreateNew(Application, Number);
    Form.Show;
    Form.Start(ParamStrUTF8(1));
  end;
  Application.Run;
end.
