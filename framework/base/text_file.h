#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/api.h"
#include "framework/base/handle.h"

namespace framework {

/// A text file read or written line by line. Every failure raises EInOutError with the file's name.
/// Others may read and append while it is open.
class FRAMEWORK_API TTextFile {
public:
    /// In bytes. No path, and no command that can be run, is nearly as long.
    static constexpr std::size_t LongestLine = std::size_t{1024} * 1024;

    /// Opens an existing file for reading.
    static TTextFile Reset(const std::string& path);
    /// Creates the file, or empties it, for writing.
    static TTextFile Rewrite(const std::string& path);
    /// Opens an existing file for writing behind its end; a missing file is an error.
    static TTextFile Append(const std::string& path);

    TTextFile(TTextFile&&) noexcept = default;
    TTextFile& operator=(TTextFile&& other) noexcept;
    /// Closes the file; text that was not written by Close is written as far as possible.
    ~TTextFile();

    /// Reads the next line without its end (CR LF or LF; the last line may lack it); false at the
    /// end of the file. A longer line than the limit raises, and nothing behind it is read: whoever
    /// made the file does not decide how much memory it takes.
    bool ReadLine(std::string& line, std::size_t limit = LongestLine);
    /// Appends a line and CR LF.
    void WriteLine(std::string_view line);
    /// Writes what is buffered and closes the file. Call it after writing: the destructor cannot
    /// report an error.
    void Close();

private:
    TTextFile(std::string path, FileHandle file, bool writing)
        : Path_(std::move(path)), File_(std::move(file)), Writing_(writing) {}
    /// Reads the next block; false at the end of the file.
    bool Fill();
    void Flush();
    void FlushQuietly() noexcept;

    std::string Path_;
    FileHandle File_;
    std::string Buffer_;        // read ahead, or not yet written
    std::size_t Position_ = 0;  // of the next character in Buffer_ while reading
    bool Writing_ = false;
};

/// Makes these lines the content of a file. The file has its old content or all of the new one at
/// any time, also when the disk is full. Raises EInOutError.
FRAMEWORK_API void ReplaceTextFile(const std::string& path, const std::vector<std::string>& lines);

}  // namespace framework
