#include "framework/base/text_file.h"

#include "framework/base/exceptions.h"
#include "framework/base/file_functions.h"
#include "framework/base/paths.h"
#include "framework/base/patience.h"

namespace framework {

namespace {

constexpr std::size_t ReadSize = std::size_t{64} * 1024;
/// Text is written in blocks of whole lines: what two writers append does not mix within a line.
constexpr std::size_t WriteSize = std::size_t{1024} * 1024;

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

FileHandle OpenToWrite(const std::string& path, DWORD access, DWORD disposition) {
    FileHandle file = TPatience().Open(path, access, ShareAll, disposition);
    if (!file)
        throw EInOutError(::GetLastError(), path);
    return file;
}

}  // namespace

TTextFile TTextFile::Reset(const std::string& path) {
    FileHandle file(::CreateFileA(path.c_str(), GENERIC_READ, ShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        throw EInOutError(::GetLastError(), path);
    return TTextFile(path, std::move(file), false);
}

TTextFile TTextFile::Rewrite(const std::string& path) {
    // CREATE_ALWAYS would refuse a hidden file.
    FileHandle file = OpenToWrite(path, GENERIC_WRITE, OPEN_ALWAYS);
    if (!::SetEndOfFile(file.Get()))
        throw EInOutError(::GetLastError(), path);
    return TTextFile(path, std::move(file), true);
}

TTextFile TTextFile::Append(const std::string& path) {
    // With this right alone every write goes to where the end is by then.
    return TTextFile(path, OpenToWrite(path, FILE_APPEND_DATA, OPEN_EXISTING), true);
}

TTextFile& TTextFile::operator=(TTextFile&& other) noexcept {
    if (this == &other)
        return *this;
    FlushQuietly();
    Path_ = std::move(other.Path_);
    File_ = std::move(other.File_);
    Buffer_ = std::move(other.Buffer_);
    Position_ = other.Position_;
    Writing_ = other.Writing_;
    return *this;
}

TTextFile::~TTextFile() {
    FlushQuietly();
}

bool TTextFile::ReadLine(std::string& line, std::size_t limit) {
    if (Writing_)
        throw EInOutError(ERROR_ACCESS_DENIED, Path_);
    line.clear();
    bool found = false;
    for (;;) {
        if (Position_ == Buffer_.size() && !Fill())
            return found;
        found = true;
        const std::size_t end = Buffer_.find('\n', Position_);
        line.append(Buffer_, Position_, end - Position_);
        if (line.size() > limit)
            throw EInOutError(ERROR_INVALID_DATA, Path_);
        if (end != std::string::npos) {
            Position_ = end + 1;
            if (line.ends_with('\r'))
                line.pop_back();
            return true;
        }
        Position_ = Buffer_.size();
    }
}

void TTextFile::WriteLine(std::string_view line) {
    if (!Writing_)
        throw EInOutError(ERROR_ACCESS_DENIED, Path_);
    Buffer_.append(line).append("\r\n");
    if (Buffer_.size() >= WriteSize)
        Flush();
}

void TTextFile::Close() {
    if (Writing_ && File_)
        Flush();
    File_.Reset();
}

bool TTextFile::Fill() {
    Buffer_.resize(ReadSize);
    Position_ = 0;
    DWORD count = 0;
    const BOOL done =
        ::ReadFile(File_.Get(), Buffer_.data(), static_cast<DWORD>(ReadSize), &count, nullptr);
    const DWORD code = ::GetLastError();
    Buffer_.resize(done ? count : 0);
    if (!done)
        throw EInOutError(code, Path_);
    return count != 0;
}

void TTextFile::Flush() {
    while (!Buffer_.empty()) {
        DWORD count = 0;
        if (!FileFunctions().Write(File_.Get(), Buffer_.data(), static_cast<DWORD>(Buffer_.size()),
                                   &count, nullptr))
            throw EInOutError(::GetLastError(), Path_);
        Buffer_.erase(0, count);
    }
}

void TTextFile::FlushQuietly() noexcept {
    if (!Writing_ || !File_)
        return;
    try {
        Flush();
    } catch (const Exception&) {
        // Close is where errors are reported.
    }
}

void ReplaceTextFile(const std::string& path, const std::vector<std::string>& lines) {
    char fresh[MAX_PATH];
    if (!::GetTempFileNameA(ExtractFileDir(path).c_str(), "txt", 0, fresh))
        throw EInOutError(::GetLastError(), path);
    TPatience patience;
    try {
        auto file = TTextFile::Rewrite(fresh);
        for (const std::string& line : lines)
            file.WriteLine(line);
        file.Close();
        if (!patience.Move(fresh, path, MOVEFILE_REPLACE_EXISTING))
            throw EInOutError(::GetLastError(), path);
    } catch (...) {
        patience.Delete(fresh);
        throw;
    }
}

}  // namespace framework
