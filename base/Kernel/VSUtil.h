#pragma once

#include <Kernel/OrvexBase_export.h>

namespace Kernel {

class UnitSettings;

namespace DM {
class IDocument;
}

namespace VSUtil {

/// The unit settings of @p document; a process-wide default set when
/// @p document is null.
ORVEXBASE_EXPORT const UnitSettings& unitSettings(const DM::IDocument* document);

} // namespace VSUtil
} // namespace Kernel
