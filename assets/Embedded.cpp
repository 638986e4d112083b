#include "assets/Embedded.h"

#include <QResource>

// The assembler copies the file in, which takes no time; as an array of C it would take half a minute.
asm(".section .rodata\n"
    ".balign 16\n"
    "tarnwick_catalogue:\n"
    ".incbin \"" TARNWICK_CATALOGUE_FILE "\"\n"
    ".previous\n");

extern const unsigned char tarnwick_catalogue[]; // NOLINT(modernize-avoid-c-arrays)

namespace tarnwick {

QString embeddedCatalogueRoot() {
    static const bool registered = QResource::registerResource(tarnwick_catalogue);
    return registered ? QStringLiteral(":/tarnwick") : QString();
}

} // namespace tarnwick
