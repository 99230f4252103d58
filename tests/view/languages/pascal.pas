{ 検索した行を数える。
  Don't free it: begin x := 'y'; end }
unit HitCounter;

{$IFDEF FPC}{$MODE Delphi}{$ENDIF}

interface

uses
  System.SysUtils, System.Classes;

type
  THitCounter = class(TObject)
  private
    FWord: string;
    FTotal: Integer;
  public
    constructor Create(const AWord: string);
    function Count(Lines: TStrings): Integer; virtual;
    property Total: Integer read FTotal;
  end;

implementation

(* 別の形の
   コメント: procedure No; *)
function THitCounter.Count(Lines: TStrings): Integer;
var
  Line: string;
begin
  Result := 0; // "quoted" end
  for Line in Lines do
    if Pos(FWord, Line) > 0 then
      Inc(Result);
  if Result > $FF then
    raise Exception.Create('多すぎる // ' + 'it''s' + #13#10);
  BEGIN Exit; END;
end;

end.
