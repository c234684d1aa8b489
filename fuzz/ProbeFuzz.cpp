// What a prober prints: any text is described or refused, and every description can be copied and printed.

#include <fuzz/Require.h>

#include <tools/Failure.h>
#include <tools/ProbeReader.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Quenzo;
    try {
        const Tools::ProbedMedia media = Tools::ReadProbe({data, data + size}, "fuzz");
        std::ostringstream text;
        media.file->PrintContent(text);
        for (const Tools::ProbedStream& stream : media.streams) {
            stream.description->PrintContent(text);
            const auto clone = stream.description->CloneBase();
            Fuzz::Require(clone->Compare(stream.description), "a clone equals its source");
        }
    } catch (const Tools::Failure& failure) {
        Fuzz::Require(failure.GetStatus() == Tools::ExitStatus::Unreadable, "what is refused is called unreadable");
    }
    return 0;
}
