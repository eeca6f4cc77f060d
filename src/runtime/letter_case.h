// Capitals and small letters as Windows pairs them, in every language alike: one character for one, and back again.
// What has no such partner (ß, the dotless i, the long s, all characters that take two units) stays as it is.
#pragma once

namespace qb {

char32_t Capital(char32_t c);
char32_t SmallLetter(char32_t c);

}  // namespace qb
