#include <brcore8/graphics/drawing_objects.h>

SIMPLEMENT_CREATABLE(SPen, SGdiObject, 2);
SIMPLEMENT_CREATABLE(SBrush, SGdiObject, 2);
SIMPLEMENT_CREATABLE(SRgn, SGdiObject, 2);
SIMPLEMENT_CREATABLE(SPalette, SGdiObject, 2);
