// QuorTools: five small functions that the library and its hosts share, in a DLL of their own. The windowless ones are
// compiled natively too, into the library of windowless code.
#pragma once

#include "quor/platform/Base.h"

#include <cstddef>

// Copies at most size - 1 bytes of `source` and always terminates, unless size is 0: then nothing is written. Returns
// the length of the whole source, so a result of `size` or more says that the copy is cut. A null source is empty.
extern "C" QUOR_TOOLS_API std::size_t strlcpy(char* destination, const char* source, std::size_t size) noexcept;

// Splits a number's text at its first point: "-12.50" gives "-12" and "50". Without a point the whole text is the
// integer part and the decimal part is empty. Neither part is checked or changed.
QUOR_TOOLS_API void getIntegerAndDecimal(CString value, CString& integerPart, CString& decimalPart);

// Three-way comparison of two date-time texts, -1, 0 or 1, multiplied by `order` (1 or -1). The forms that are read and
// their order stand at quor::DateTime; a text that cannot be read, a null one too, stands before every date, and two
// such texts are equal.
QUOR_TOOLS_API int CompareDateTime(char* first, char* second, int order);

#if defined(_WIN32)

// One key of an INI file: operation 0 reads it into `value`, 1 writes `value`. Returns 1, or 0 on failure with a plain
// sentence in `error` that names file, section and key; on success `error` is empty. `file` is never changed.
//
// A file without any folder or drive is looked for beside the executable. An empty name, section or key fails.
//
// Reading: where the file, the section or the key is missing, `value` becomes "Settings not found". A key with nothing
// behind its "=" gives an empty value.
//
// Values are single lines of code page 1252, kept byte for byte. The private-profile calls, through which this goes,
// drop outer blanks and one outer pair of quotes when they read; a value that begins or ends with a blank or a quote is
// therefore written in a pair of quotes of its own, and a file edited by hand loses what stands outside such a pair.
// What would not read back is refused, with nothing written: line breaks and NULs anywhere, "]" in a section, "=" in a
// key, a key that begins with ";" or "[" (a comment, a section), outer blanks in a section or key, and any text over
// 32,766 bytes (32,764 where the value needs its quotes), which those calls would cut.
QUOR_TOOLS_API int quoru_ini_file_operations(int operation, CString section, CString key, CString& value, CString& file,
                                             CString& error);

// The same for the user's application data: a file without any folder or drive is looked for in the folder of the
// executable's name below the user's application data, which writing creates.
QUOR_TOOLS_API int quoru_appdata_ini_file_operations(int operation, CString section, CString key, CString& value,
                                                     CString& file, CString& error);

#endif
