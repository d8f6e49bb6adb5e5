// Steps that look at what was before: comparison, annotation, history.

#include "framework/base/files.h"
#include "framework/ui/line_view.h"
#include "support/Drive.h"
#include "support/Process.h"
#include "tour/Tour.h"
#include "workbench/AnnotationForm.h"
#include "workbench/ComparisonForm.h"
#include "workbench/HistoryForm.h"

namespace tour {

using namespace framework;

namespace {

/// A small program, as it was at some time.
std::string Program(int version) {
    const auto from = [version](int first, const std::string& text) {
        return version >= first ? text : std::string();
    };
    return "// Bytes between one writer and one reader.\r\n"
           "\r\n"
           "#include \"ring.h\"\r\n" +
           from(2, "#include <assert.h>\r\n") +
           "\r\n"
           "int ring_put(struct ring *ring, unsigned char byte)\r\n"
           "{\r\n" +
           from(2, "    assert(ring->size > 1);\r\n") +
           (version < 3 ? "    unsigned next = ring->head + 1;\r\n"
                          "    if (next == ring->size)\r\n"
                          "        next = 0;\r\n"
                        : "    const unsigned next = (ring->head + 1) % ring->size;\r\n") +
           "    if (next == ring->tail)\r\n"
           "        return " +
           (version < 4 ? "-1" : "RING_FULL") +
           ";\r\n"
           "    ring->bytes[ring->head] = byte;\r\n" +
           from(4, "    write_barrier();\r\n") +
           "    ring->head = next;\r\n"
           "    return " +
           (version < 4 ? "0" : "RING_OK") +
           ";\r\n"
           "}\r\n"
           "\r\n"
           "int ring_get(struct ring *ring)\r\n"
           "{\r\n"
           "    int byte;\r\n"
           "    if (ring->head == ring->tail)\r\n"
           "        return " +
           (version < 4 ? "-1" : "RING_EMPTY") +
           ";\r\n"
           "    byte = ring->bytes[ring->tail];\r\n"
           "    ring->tail = (ring->tail + 1) % ring->size;\r\n"
           "    return byte;\r\n"
           "}\r\n";
}

template <class TView>
TView& OpenView() {
    const std::vector<TView*> open = support::OpenForms<TView>();
    if (open.size() != 1)
        throw std::runtime_error("a window is not there");
    return *open.front();
}

void Close(TForm& form) {
    ::SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
}

}  // namespace

void TTour::PrepareThePast(const std::string& repository, const std::string& project) {
    const auto client = [&](const std::string& arguments, const std::string& folder) {
        const auto result =
            support::RunProcess("cvs -Q -d \"" + repository + "\" " + arguments, folder);
        Expect(result.ExitCode == 0, "the client: " + result.Output);
    };
    client("init", "C:\\");
    support::WriteBytes(project + "\\ring.c", Program(1));
    support::WriteBytes(project + "\\ring.h", "struct ring;\r\n");
    support::WriteBytes(project + "\\test\\ring_test.c", "#include \"ring.h\"\r\n");
    client("import -m \"Start the ring buffer\" ring VENDOR START", project);
    support::DeleteFolder(project);
    client("checkout -d ring ring", Folder_.Path());
    const char* const messages[] = {"Check that a ring has room",
                                    "Shorten the way around\n\nThe compiler makes the same of it.",
                                    "Name what is returned, and write in order"};
    for (int version = 2; version <= 4; ++version) {
        support::WriteBytes(project + "\\ring.c", Program(version));
        support::WriteBytes(project + "\\message.txt", messages[version - 2]);
        if (version == 4)
            support::WriteBytes(project + "\\ring.h",
                                "enum { RING_OK, RING_FULL, RING_EMPTY = -1 };\r\n"
                                "struct ring;\r\n");
        client("commit -F message.txt", project);
        if (version == 2) {
            client("tag release_1_0", project);
            client("tag -b stable_1", project);
        }
        if (version == 3) {
            client("update -r stable_1", project);
            support::WriteBytes(project + "\\ring.h", "struct ring; /* stable */\r\n");
            client("commit -m \"Say which one it is\"", project);
            client("tag release_1_1", project);
            client("update -A", project);
        }
    }
    ::DeleteFileA((project + "\\message.txt").c_str());
    std::string changed = Program(4);
    const std::string byte = "    int byte;\r\n";
    changed.replace(changed.find(byte), byte.size(), "    int byte;\r\n    read_barrier();\r\n");
    const std::string word = "one writer and one reader";
    changed.replace(changed.find(word), word.size(), "one writer and many readers");
    support::WriteBytes(project + "\\ring.c", changed);
}

void TTour::LookAtThePast() {
    const std::string project = Folder_ / "ring";
    PrepareThePast(Folder_ / "ring repository", project);
    Form_->OpenProject(project);
    Select("ring.c");
    Choose("Selection/Compare");
    auto& comparison = OpenView<workbench::TComparisonForm>();
    const auto changes = workbench::ChangesIn(comparison.Compared());
    Expect(changes.size() == 2, std::to_string(changes.size()) + " changes");
    Play_.Picture(comparison.Handle(), "comparison");
    Close(comparison);

    Choose("Selection/Annotate");
    auto& annotation = OpenView<workbench::TAnnotationForm>();
    auto& lines = support::Part<TLineView>(annotation, "Lines");
    Expect(lines.Line(0, 0).Margin.starts_with("1.1 "), lines.Line(0, 0).Margin);
    lines.SetCurrent(5);
    Play_.Picture(annotation.Handle(), "annotation");
    Close(annotation);

    Choose("Selection/History");
    auto& history = OpenView<workbench::THistoryForm>();
    auto& revisions = support::Part<TListView>(history, "List");
    Expect(revisions.Count() == 5, std::to_string(revisions.Count()) + " revisions");
    Select("ring.h");
    Close(history);
    Choose("Selection/History");
    auto& branched = OpenView<workbench::THistoryForm>();
    Play_.Picture(branched.Handle(), "history");
    Close(branched);
    Choose("Working copy/Commits of the project");
    auto& commits = OpenView<workbench::THistoryForm>();
    Play_.Picture(commits.Handle(), "commits");
    Close(commits);
    Choose("File/Close project");
}

}  // namespace tour
