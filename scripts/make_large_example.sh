#!/bin/sh
# Writes the large example network in native text: pathways of a metabolic map in rows. Every fourth
# step has its enzyme, so that the model stays within the simulator's 2048 elementary steps; some
# have a carrier that stands in the map many times.
#   scripts/make_large_example.sh [NODES] | build/ostrand-tool convert /dev/stdin examples/large-metabolism.net
nodes=${1:-2000}
LC_ALL=C awk -v want="$nodes" '
function node(x, y, type, color, label, rest) {
    n++
    text = text sprintf("[S%d 0 %d %d 0 %s %d{<67F><0C>%s}-%s]\n", n, x, y, color, type, label, rest)
    return n
}
function arc(type, from, to, fields) {
    a++
    arc_type[a] = type; arc_from[a] = from; arc_to[a] = to; arc_fields[a] = fields
    return a
}
BEGIN {
    steps = 36                          # of one pathway
    for (row = 0; n < want; row++) {
        y = 120 + row * 190
        last = node(100, y, 13, "3", sprintf("S_{%d}", row + 1), (row % 5 ? "" : "%") "5 mM")
        for (i = 1; (i <= steps || want - n < 20) && n < want; i++) {
            x = 100 + (i - 1) * 210
            product = node(x + 210, y, 13, "3", sprintf("M_{%d.%d}", row + 1, i), row % 5 == 0 && i % 7 == 0 ? "%" : "")
            enzyme = i % 4 != 1 || n == want ? 0 : node(x + 105, y - 70, 9, "247", sprintf("E_{%d.%d}", row + 1, i), "2 uM")
            reaction = arc(i % 4 == 1 ? 272 : 273, last, product, "{<66F><4C>0.1 mM}{" 10 + (row * 7 + i * 3) % 40 "}")
            if (enzyme) arc(32, enzyme, -reaction, "")
            if (i % 12 == 1 && i < steps && n < want - 1) {
                arc(512, node(x + 60, y + 70, 13, "#ffc775", "ATP", "2 mM"), -reaction, "{<66F><4C>0.2 mM}{}")
                arc(1025, node(x + 150, y + 70, 13, "#ffc775", "ADP", ""), -reaction, "")
            }
            if (i % 36 == 0) arc(48, product, -first, "{<66F><4C>1 mM}{}")
            if (i % 36 == 1) first = reaction
            last = product
        }
    }
    printf "# Lattrix: 1.2\n[N%d 0 2 20 20\n%s", n, text
    for (i = 1; i <= a; i++) {
        to = arc_to[i] < 0 ? n - arc_to[i] : arc_to[i]
        printf "[A%d %d %d 2 %d %d%s]\n", n + i, arc_type[i] == 48 ? 89 : 0, arc_type[i], arc_from[i], to, arc_fields[i]
    }
    print "]"
}'
