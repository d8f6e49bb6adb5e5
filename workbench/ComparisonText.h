#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// A part of two texts that differs, with lines around it that do not.
struct THunk {
    int From = 1;  ///< Its first line in the older text, from 1.
    int To = 1;    ///< In the newer one.
    /// Lines without their ends, behind a blank (in both texts), "-" (older) or "+" (newer).
    std::vector<std::string> Lines;
};

/// What differs of a file.
struct TFileDifference {
    std::string Name;          ///< As the client says it, with "/" between folders.
    std::string FromRevision;  ///< Empty where there is none.
    std::string ToRevision;
    bool IsBinary = false;      ///< There is nothing to be seen of it.
    bool IsNew = false;         ///< The older side does not have it.
    bool IsRemoved = false;     ///< The newer one does not.
    bool IsWhole = false;       ///< One side alone has it, but the client could not show its text.
    bool FromEndsOpen = false;  ///< The last line of that text has no end.
    bool ToEndsOpen = false;
    std::vector<THunk> Hunks;
};

/// What the client has said in a unified comparison.
struct TComparison {
    std::vector<TFileDifference> Files;
    std::vector<std::string> Remarks;  ///< Lines that belong to no file: mostly complaints.
};

/// Reads the unified text of "diff", with lines that end in LF or CR LF. Any text gives a result.
TComparison ParseComparison(std::string_view text);

/// The client's text as a patch: without its complaints.
std::string PatchOf(std::string_view text);

/// Gives a file that one side alone has the lines of that side.
void ShowWhole(TFileDifference& file, const std::vector<std::string>& lines, bool isNew);

/// Two lines side by side.
struct TComparedLine {
    enum class TKind {
        Same,
        Changed,  ///< Both are there.
        Deleted,  ///< From alone is.
        Added,    ///< To alone is.
        Gap       ///< Lines are left out; From says how many.
    };
    TKind Kind = TKind::Same;
    int FromNumber = 0;  ///< From 1; 0 where there is no line.
    int ToNumber = 0;
    std::string From;
    std::string To;
};

/// The lines of a text without their ends, CR LF or LF.
std::vector<std::string> LinesOf(std::string_view text);

/// Both texts side by side: what was replaced stands beside what it was replaced with.
/// @param newer the lines of the newer text; none for the parts that differ alone, with gaps
/// between them. Where they do not belong to the difference only its parts are shown, too.
std::vector<TComparedLine> SideBySide(const TFileDifference& file,
                                      const std::vector<std::string>* newer);

/// The changes, with some lines around them and gaps for all others.
std::vector<TComparedLine> ChangesOnly(std::vector<TComparedLine> lines, std::size_t context);

/// The positions of the changes in them: each a line where one begins.
std::vector<int> ChangesIn(const std::vector<TComparedLine>& lines);

/// A part of a line.
struct TWordRange {
    std::size_t Start;   ///< In bytes.
    std::size_t Length;  ///< In bytes.
    bool operator==(const TWordRange&) const = default;
};

/// What differs between two lines, word by word; ranges in order, not touching.
struct TWordDifference {
    std::vector<TWordRange> From;
    std::vector<TWordRange> To;
};
TWordDifference CompareWords(std::string_view from, std::string_view to);

}  // namespace workbench
