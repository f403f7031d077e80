#pragma once

#include <Kernel/OrvexBase_export.h>

namespace Kernel {

class UnitSettings;

namespace DM {

class ParserContext;

/**
 * What the user-interface libraries need of an open document (a project):
 * the names its expressions may use and the units it shows values in.
 */
class ORVEXBASE_EXPORT IDocument
{
public:
    virtual ~IDocument();
    virtual const ParserContext& parserContext() const = 0;
    virtual const UnitSettings& unitSettings() const = 0;
};

} // namespace DM
} // namespace Kernel
