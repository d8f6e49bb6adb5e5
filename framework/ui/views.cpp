#include "framework/ui/views.h"

namespace framework {

TTreeNode::~TTreeNode() = default;
TListRows::~TListRows() = default;
TTextView::~TTextView() = default;

}  // namespace framework
