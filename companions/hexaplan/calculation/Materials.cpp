#include "hexaplan/calculation/Materials.h"

namespace hexaplan {

namespace {

constexpr Material kMaterials[kLastMaterial] = {
    {1, "E295", 7850, 206000, 79300, 275, 470, 125, 370},
    {2, "C45E+N", 7850, 206000, 79300, 340, 580, 160, 470},
    {3, "C45E+QT", 7850, 206000, 79300, 430, 650, 200, 590},
    {4, "42CrMo4+QT", 7850, 206000, 79300, 650, 900, 290, 760},
    {5, "16MnCr5 case-hardened", 7850, 206000, 79300, 550, 800, 430, 1470},
    {6, "18CrNiMo7-6 case-hardened", 7850, 206000, 79300, 700, 980, 500, 1500},
};

}  // namespace

const Material& MaterialOf(int number) { return kMaterials[number - 1]; }

}  // namespace hexaplan
