// One place, two sizes: what the includer defined decides.
#pragma once

struct PlantedSwitched {
    int value = 0;
#ifdef PLANTED_WIDE
    int more = 0;
#endif
};
