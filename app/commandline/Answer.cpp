#include "app/commandline/Answer.h"

#include <cstdio>

namespace tarnwick {

void complain(const QString& line) {
    QString oneLine = line;
    oneLine.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "tarnwick: %s\n", oneLine.toUtf8().constData());
}

void print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

} // namespace tarnwick
