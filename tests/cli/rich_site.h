#pragma once

namespace orvane {

/// A map with something in each of its sections: a plot with a slope, a grid with shaded cells, two
/// groups whose ranges overlap, every kind of reading, and a point without a place.
inline constexpr const char* RichSite =
    "# A site.\n\xA9 Field Office\nM\t-2.5\nZ\tfruit,leaf,rest\t1,10\n"
    "T\tMain\tTrail\nG\tCamp=Base\tN0\tE0\t10\nG\tRidge\tN0\tE0.01\t30\n"
    "C\tHut\tCamp\t100\t90\t5\nN\tDell\tCamp\nA\tDell\t25\n"
    "T\tPlot\tArea\nP\tCamp\nP\tRidge\nG\tTop\tN0.01\tE0.01\t80\nG\tFar\tN0.01\tE0\t60\nP\tCamp\n"
    "H\tCamp\t100\t10\t10\t15\tA1\t1\nHS\tA1\tred\t45\nO\tCamp\n"
    "T\t\tOru\tUlo,4\t2004-6-1\nG\t0900-0910\tN0.001\tE0.001\t\t\t,1,2\n"
    "G\t1000-1010\tN0.005\tE0.001\t\t\t,2,0\nG\t1100-1110\tN0.005\tE0.006\t\t\t,1,1\n"
    "G\t1200-1210\tN0.001\tE0.006\t\t\t,0,1\n"
    "T\t\tFen\tAna,3\t2004-6-2\nG\t0900-0930\tN0.003\tE0.003\t\t\t,1,2\n"
    "G\t1000-1030\tN0.008\tE0.003\t\t\t,0,2\nG\t1100-1130\tN0.008\tE0.008\t\t\t,1,0\n"
    "G\t1200-1230\tN0.003\tE0.008\t\t\t,2,2\n"
    "R\tOru range\nK\tOru\t\t8:00-12:30\nR\tFen range\nK\tFen\n";

}  // namespace orvane
