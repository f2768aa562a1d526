// The temporary wrappers of every kind.
#ifndef BRCORE8_SRC_APP_IDLE_MAPS_H
#define BRCORE8_SRC_APP_IDLE_MAPS_H

namespace brcore8 {

// Ends them, unless someone holds them.
void DeleteTempMaps();

}  // namespace brcore8

#endif
