#pragma once

#include <tools/Report.h>

namespace Quenzo::Tools {

/// The catalogues and tables of the library, whole and in their order.
Report ListCodecs();
Report ListFormats();
Report ListGroups();
Report ListLayouts();
Report ListSampleFormats();
Report ListPixelFormats();
Report ListColours();

}  // namespace Quenzo::Tools
