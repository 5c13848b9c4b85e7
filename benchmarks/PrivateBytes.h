// What the process has to itself.
#pragma once

// Bytes that no other process shares, by pages. The heaps are not walked for it: Wine's walk can go round for ever
// where large blocks lie below the small ones.
long long privateBytes();
