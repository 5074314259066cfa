#include "formatproperty.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    const QString broken = brokenFormatProperty(input);
    if (!broken.isEmpty()) {
        std::fprintf(stderr, "This input %s\n", qUtf8Printable(broken));
        std::abort();
    }
    return 0;
}
