#include "workbench/BinaryForm.h"

#include "core/Cvs_utils.h"
#include "forms/Layout.h"
#include "forms/Pictures.h"
#include "framework/ui/tree_view.h"

namespace workbench {

using namespace framework;
using hosting::TBinaryChoice;

namespace {

/// "TreeView1" with a line for each file.
class TBinaryForm : public TForm {
public:
    TBinaryForm(const std::string& folder, const std::vector<TBinaryChoice>& files)
        : TForm("Binary files") {
        tandrel::TFormRows rows(*this, 460, 0);
        rows.Line("Label1", files.size() == 1
                                ? "1 file is kept as binary: byte for byte, without keywords. Take "
                                  "its tick off if it is a text."
                                : std::to_string(files.size()) +
                                      " files are kept as binary: byte for byte, without "
                                      "keywords. Take the tick off those that are texts.");
        Tree_ = &rows.Block<TTreeView>("TreeView1", 260);
        Tree_->SetStateImages(States_.Get());
        Tree_->OnStateClick = [](TTreeViewNode& node) {
            node.SetStateImage(IsTicked(node) ? tandrel::ExcludedImage : tandrel::IncludedImage);
        };
        AddOkCancel(rows);
        const std::string top = tandrel::SlashSep(folder, "");
        const TTreeUpdate update(*Tree_);
        for (const TBinaryChoice& file : files)
            Tree_->Root()
                .AddChild(file.Path.starts_with(top) ? file.Path.substr(top.size()) : file.Path)
                .SetStateImage(file.IsBinary ? tandrel::IncludedImage : tandrel::ExcludedImage);
    }

    void Save(std::vector<TBinaryChoice>& files) {
        for (std::size_t i = 0; i < files.size(); ++i)
            files[i].IsBinary = IsTicked(*Tree_->Root().Children()[i]);
    }

private:
    static bool IsTicked(const TTreeViewNode& node) {
        return node.StateImage() == tandrel::IncludedImage;
    }

    tandrel::TStateImages States_;
    TTreeView* Tree_;
};

}  // namespace

bool AskForBinary(const std::string& folder, std::vector<TBinaryChoice>& files) {
    TBinaryForm form(folder, files);
    if (form.ShowModal() != mrOk)
        return false;
    form.Save(files);
    return true;
}

}  // namespace workbench
