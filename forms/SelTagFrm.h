#pragma once

#include "cvs/Cvstempl_types.h"
#include "forms/Layout.h"
#include "forms/Pictures.h"
#include "framework/ui/list_view.h"

namespace tandrel {

class TCvsObject;

/// Lets the user choose a symbolic name, or the date of a revision.
class TSelect_TagFrm : public framework::TForm {
public:
    explicit TSelect_TagFrm(TCvsObject& cvs);

    /// Shows the symbolic names that the option admits. One of the two, once.
    void LoadTag(TTagShowOption option);
    /// Shows the dates of revisions instead.
    void LoadRevData();
    /// The chosen row, or none.
    const framework::TListRow* Selected() const { return ListView1_->Selected(); }

private:
    void Fill();
    void FillTags();
    void FillDates();
    void Refresh();

    TCvsObject& Cvs_;
    bool Dates_ = false;
    TTagShowOption Option_ = tsoAll;
    TStateImages Images_;
    framework::TListView* ListView1_;
    framework::TButton* Ok_;
    framework::TTimer* Timer1_;
};

}  // namespace tandrel
