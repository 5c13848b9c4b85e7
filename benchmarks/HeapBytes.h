// Counts what is allocated in every heap of the process, block by block.
#pragma once

// Bytes in use, the sum of the sizes that were asked for; walks all heaps, so it takes a while.
long long heapBytes();
