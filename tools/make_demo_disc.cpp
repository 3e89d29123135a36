#include "demodisc/DemoDisc.h"

#include <cstdio>
#include <cstring>
#include <exception>

namespace {

constexpr const char *Help =
    "Usage: make_demo_disc [--data-track] [--long] FILE.cue\n"
    "\n"
    "Writes the image of a compact disc with made-up music: the sheet FILE.cue and, beside it, FILE.bin.\n"
    "It holds six short tracks, and the same call always gives the same bytes.\n"
    "\n"
    "  --data-track  add a data track in a second session\n"
    "  --long        ten tracks of a minute each\n"
    "  --help        show this text\n";

int complain(const char *what, const char *about)
{
    std::fprintf(stderr, "make_demo_disc: %s%s\n", what, about);
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    bool data = false;
    demodisc::DiscPlan plan = demodisc::shortDisc();
    const char *target = nullptr;
    for (int i = 1; i < argc; ++i) {
        const char *argument = argv[i];
        if (std::strcmp(argument, "--help") == 0) {
            std::fputs(Help, stdout);
            return 0;
        }
        if (std::strcmp(argument, "--data-track") == 0)
            data = true;
        else if (std::strcmp(argument, "--long") == 0)
            plan = demodisc::longDisc();
        else if (argument[0] == '-')
            return complain("unknown option ", argument);
        else if (target)
            return complain("one file name, please, not also ", argument);
        else
            target = argument;
    }
    if (!target)
        return complain("no file name; see --help", "");
    if (std::filesystem::path(target).extension() != ".cue")
        return complain("the file name must end in .cue: ", target);
    try {
        demodisc::write(data ? demodisc::withDataTrack(plan) : plan, target);
    } catch (const std::exception &failure) {
        return complain("writing failed: ", failure.what());
    }
}
