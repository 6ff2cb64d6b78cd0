// Status texts. Each text is the status's name and its description, both
// taken from IPP_STATUS_LIST, so every declared status has exactly one text.
#include "ippcore.h"

const char *ippGetStatusString(IppStatus status)
{
    // One case per status: a duplicated value in the list fails to compile.
#define ORB_STATUS_CASE(name, value, text) \
    case value:                            \
        return #name ": " text;

    switch (status) {
        IPP_STATUS_LIST(ORB_STATUS_CASE)
    default:
        break;
    }
#undef ORB_STATUS_CASE
    // Codes outside the list share the text of the status that names them.
    return ippGetStatusString(ippStsUnknownStatusCodeErr);
}
