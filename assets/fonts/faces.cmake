# The fonts that the game asks for, each with the face that stands in for it: a path below the
# system's font folder. docs/fonts.md tells which package each comes from and why it was chosen.
set(brindle_font_root /usr/share/fonts)
set(brindle_faces
    "Montserrat-Black.otf=opentype/sora/Sora-ExtraBold.otf"
    "Montserrat-SemiBold.otf=truetype/roboto/unhinted/RobotoTTF/Roboto-Medium.ttf"
    "Montserrat-SemiBoldItalic.otf=truetype/open-sans/OpenSans-BoldItalic.ttf"
    "LiberationMono-Bold.ttf=truetype/open-sans/OpenSans-ExtraBold.ttf"
    "DejaVuSans-Bold.ttf=truetype/dejavu/DejaVuSans-Bold.ttf"
    "RocketBrush-DYwyW.otf=opentype/kaushanscript/KaushanScript-Regular.otf"
    "StarJediOutline-y0xm.ttf=truetype/open-sans/OpenSans-ExtraBoldItalic.ttf"
    "Quango-xlVR.otf=truetype/roboto/unhinted/RobotoTTF/Roboto-Black.ttf")
