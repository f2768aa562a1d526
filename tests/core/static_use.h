// What static initialisers did before main, for the test that looks at it.
#ifndef BRCORE8_TESTS_CORE_STATIC_USE_H
#define BRCORE8_TESTS_CORE_STATIC_USE_H

#include <brcore8/core/object.h>

struct StaticUse {
    const char* text;      // read from a string made before main
    void* block;           // taken from a pool before main
    SObject* object;       // made from a descriptor before main
    int idleConsumers;     // seen on the process-wide queue before main
    const char* resource;  // loaded before main
};

StaticUse& GetStaticUse();

#endif
