#include "forms/Commit_frm.h"

#include "cvs/Cvstempl.h"
#include "cvs/Dialogs.h"
#include "forms/Frames.h"
#include "forms/Msg_frm.h"

namespace tandrel {

TCommit_Form::TCommit_Form()
    : TFileListStep(
          "CVS commit", "CVS commit will be  performed on ",
          {{"Forces commit of a new revision even if no changes have been made to the "
            "files.",
            &TCvsOptions::ForceFlag},
           {"Local. Commits changes from the current directory only.", &TCvsOptions::LocalOnly}}) {}

bool Commit_Prepare(TCvsObject& CvsObject) {
    return Show_Frames("CVS commit", {NewForm<TCommit_Form>, NewForm<TMessage_Frm>}, CvsObject);
}

}  // namespace tandrel
