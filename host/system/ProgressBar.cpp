#include "ProgressBar.h"

#include "Terminal.h"

#include <cstdio>
#include <string>

ProgressBar::ProgressBar(int total)
    : total(total)
    , visible(standardErrorIsTerminal())
{
}

ProgressBar::~ProgressBar()
{
    clearLine();
}

void ProgressBar::show(int done) const
{
    if (!visible)
        return;
    constexpr int Width = 40;
    const auto filled = static_cast<std::size_t>(static_cast<long long>(done) * Width / total);
    std::fprintf(stderr, "\r[%s%s] %d of %d frames", std::string(filled, '#').c_str(),
                 std::string(Width - filled, '.').c_str(), done, total);
    std::fflush(stderr);
}
