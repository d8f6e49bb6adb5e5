#include "forms/Update_frm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/Frames.h"
#include "forms/Merge_Frm.h"
#include "forms/StikyFrm.h"

namespace tandrel {

TUpdate_Form::TUpdate_Form()
    : TFileListStep(
          "CVS update", "CVS update will be  performed on ",
          {{"Clears any sticky tags", &TCvsOptions::ResetSticky},
           // The words of the commit; it is the same option.
           {"Local. Commits changes from the current directory only.", &TCvsOptions::LocalOnly},
           {"Retrieves absent directories", &TCvsOptions::CreateDirs},
           {"Checkout to standard output", &TCvsOptions::ToStandardOutput}}) {}

bool Update_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("CVS update",
                       {NewForm<TUpdate_Form>, NewForm<TStiky_Frm>, NewForm<TMerge_Form>},
                       CvsObject);
}

}  // namespace tandrel
