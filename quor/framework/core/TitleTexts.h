// Window titles with the client's name and what else belongs there.
#pragma once

#include "quor/platform/Base.h"

namespace quor::framework {

// The name as a title shows it: at most 30 characters, then "..".
CString shortClientName(const CString& name);

// The title with the name and, in brackets, details. A title that has the name already, short or whole, or says
// "Modifying" stays as it is; details that are empty or stand in the title are left out.
CString titleWithDetails(const CString& title, const CString& clientName, const CString& details);

// The title with the name (may be empty) and, behind 21 blanks, the text of a selection (may be empty). A long
// selection, or a shorter one with many capitals, gets the short name.
CString titleWithSelection(const CString& title, const CString& clientName, const CString& selection);

}  // namespace quor::framework
