// The two stored records of a list's looks: its customised appearance and what its user chose on top of it.
//
// Both begin with background, text colour (hexadecimal, red in the low byte), font face and font size. The customise
// record goes on with a keyword column and pairs of keyword and colour, the user record with triples of keyword, text
// colour and background. Empty fields do not exist for a reader: it skips them, and the next field takes their place. A
// comma inside a name breaks its record, since nothing is escaped. docs/formats.md shows both forms.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

namespace quor::foundation {

// Read a record into `settings`. What the text does not hold, or holds in a form that is no number, stays as it was.
// Keywords replace what stood in the arrays, which are made on demand and belong to the record's owner; they are
// folded to capitals (A to Z). A cut text loses all keywords of a customise record; of a user record it loses the
// entry that is cut. The keyword arrays are of equal length afterwards wherever the text has keywords.
QUOR_CONTROLS_API void parseAppearanceRecord(const CString& text, cCustomizedAppearanceSettings& settings);
QUOR_CONTROLS_API void parseUserAppearanceRecord(const CString& text, cCustomizedAppearanceSettings& settings);

// Write a record. Keywords of the customise level are written while they are enabled and have a column. A colour
// missing at the end of an array is written as the one before it (FFFFFFFF before the first).
QUOR_CONTROLS_API CString formatAppearanceRecord(const cCustomizedAppearanceSettings& settings);
QUOR_CONTROLS_API CString formatUserAppearanceRecord(const cCustomizedAppearanceSettings& settings);
// Background, text colour, face and size alone.
QUOR_CONTROLS_API CString formatLooks(const cCustomizedAppearanceSettings& settings);

}  // namespace quor::foundation
