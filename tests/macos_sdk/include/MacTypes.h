// Types of long ago, which the headers of every framework bring along in the global namespace. Nothing here needs them, but
// some of Ovin's own types are called alike: outside of `namespace ovin` such a name is ambiguous.
#pragma once

struct Point {
    short v;
    short h;
};
typedef struct Point Point;

struct Rect {
    short top;
    short left;
    short bottom;
    short right;
};
typedef struct Rect Rect;

typedef long Size;
