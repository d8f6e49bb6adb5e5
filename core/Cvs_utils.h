#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace framework {
class TStringList;
}

namespace tandrel {

/// Helpers for paths, command lines and the client's output. Texts are in the process's code page.
/// Positions count bytes, from 1; a position before the text stands for its start,
/// one behind it for its end.

/// Joins a folder and a name with exactly one backslash. An empty folder gives an empty result.
std::string SlashSep(std::string_view Dir, std::string_view Name);
/// The text with a ";" at its end; an empty text stays empty.
std::string SlashSemicolon(std::string_view S);
/// The text with a double quote at its start and at its end; an empty text stays empty.
std::string SetApostrophe(std::string_view S);
/// The text without one trailing backslash.
std::string RemoveSlashSep(std::string_view S);
/// The text without one leading slash (a forward one).
std::string RemoveBackSlash(std::string_view S);

/// The first character; empty for an empty text.
std::string FirstChar(std::string_view S);
/// The position of the last `Ch`, a text of one character; 0 when there is none.
int LastPos(std::string_view S, std::string_view Ch);
/// The text padded on the left with `Ch` to `Len` characters, never shortened.
std::string LeftPadCh(std::string_view S, char Ch, int Len);
/// The text followed by CR LF.
std::string Add_Perevod(std::string_view S);

/// Puts the characters from `Pos` up to, not including, the next `Ch` into `Result`. Leaves
/// `Result` as it was when no `Ch` follows.
void CopyFromPosToString(std::string_view S, int Pos, char Ch, std::string& Result);
/// The number of characters from `Pos` before the next `Ch` or the end of the text.
int CountFromPosToString(std::string_view S, int Pos, char Ch);
/// The number of characters from `Pos` before the next CR LF or the end of the text.
int CountFromPosToPerevod(std::string_view S, int Pos);
/// True when a CR LF starts at one of the positions `Pos` - 2 to `Pos`.
bool IsPerevodBeforePos(std::string_view S, int Pos);
/// The characters from `From` up to, not including, `Before`, but at least the one at `From`;
/// empty when `From` lies behind `Before`.
std::string CopyStartFromPos_BeforePos(std::string_view S, int From, int Before);
/// The characters from `Pos` to the end.
std::string Copy_FromPosToEnd(std::string_view S, int Pos);
/// The characters behind the first `Sub`, a text of one character; empty when there is none.
std::string RemoveBeforeString(std::string_view S, std::string_view Sub);

/// Removes the empty lines of captured output.
void ClearEmptyLines(framework::TStringList& List);

/// The name of the file `FileName` in the folder `Dir` relative to the folder `Root`; upper and
/// lower case are alike. Raises framework::Exception when `Dir` lies elsewhere.
std::string GetRelativePath(std::string_view Root, std::string_view Dir, std::string_view FileName);

/// Appends one piece to a command line: a blank and the piece, or the bare piece while the line
/// is still empty. An empty piece behind others therefore leaves its blank. The piece must not be
/// part of `Text` itself.
void LAppend(std::string& Text, std::string_view Piece);
/// Joins pieces to a command line, one LAppend after the other.
std::string LConcat(std::initializer_list<std::string_view> Items);

}  // namespace tandrel
