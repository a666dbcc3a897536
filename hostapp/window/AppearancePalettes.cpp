#include "hostapp/window/AppearancePalettes.h"

namespace plotix {

const LookColours& darkLook()
{
    static const LookColours look{.window{0x2a, 0x2b, 0x2e},
                                  .base{0x1f, 0x20, 0x22},
                                  .alternateBase{0x24, 0x25, 0x28},
                                  .button{0x3a, 0x3c, 0x40},
                                  .text{0xe2, 0xe3, 0xe5},
                                  .dimText{0x8b, 0x8e, 0x94},
                                  .accent{0x3b, 0x78, 0xc4},
                                  .link{0x6f, 0xa8, 0xec},
                                  .line{0x1a, 0x1b, 0x1d},
                                  .hover{255, 255, 255, 12},
                                  .boxEdge{0x70, 0x73, 0x79},
                                  .quietText{0xa9, 0xac, 0xb2}};
    return look;
}

const LookColours& lightLook()
{
    static const LookColours look{.window{0xf2, 0xf2, 0xf4},
                                  .base{0xff, 0xff, 0xff},
                                  .alternateBase{0xf7, 0xf7, 0xf9},
                                  .button{0xe4, 0xe5, 0xe8},
                                  .text{0x1e, 0x1f, 0x22},
                                  .dimText{0x6b, 0x6e, 0x75},
                                  .accent{0x2f, 0x6f, 0xbe},
                                  .link{0x1f, 0x5f, 0xb0},
                                  .line{0xcf, 0xd1, 0xd6},
                                  .hover{0, 0, 0, 12},
                                  .boxEdge{0x8f, 0x93, 0x9b},
                                  .quietText{0x4a, 0x4d, 0x54}};
    return look;
}

QPalette paletteOf(const LookColours& look)
{
    QPalette palette(look.button, look.window);
    palette.setColor(QPalette::Window, look.window);
    palette.setColor(QPalette::Base, look.base);
    palette.setColor(QPalette::AlternateBase, look.alternateBase);
    palette.setColor(QPalette::ToolTipBase, look.base);
    palette.setColor(QPalette::ToolTipText, look.text);
    palette.setColor(QPalette::Highlight, look.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, look.text);
    palette.setColor(QPalette::Link, look.link);
    palette.setColor(QPalette::BrightText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, look.text);
        palette.setColor(QPalette::Disabled, role, look.dimText);
    }
    palette.setColor(QPalette::PlaceholderText, look.dimText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, look.button);
    return palette;
}

}  // namespace plotix
