.pragma library

// Ivory on crackle black in a grey-green panel, like an old cockpit.

// Text, from values down to what is off or unknown.
var ink = "#f4ecd8"
var muted = "#b9b6a6"
var faint = "#7f8278"
var ghost = "#23282a"

// Surfaces.
var faceTop = "#1b1c1d"
var faceMiddle = "#141516"
var faceBottom = "#0e0f10"
var metal = "#565f5c"
var metalDark = "#3a4341"
var crackle = "#282c2f"
var night = "#0b0d0d"
var bezelBright = "#6d7673"
var bezelDark = "#272b2b"
var bezelEdge = "#070808"

// Meanings.
var accent = "#ff8a1e"
var good = "#58c46c"
var caution = "#ffc02e"
var danger = "#e2402f"
var flash = "#3d9bff"
var cold = "#4ea3ff"

// The horizon.
var sky = "#2f86cf"
var skyHigh = "#1c5ea3"
var ground = "#8a5528"
var groundLow = "#5a3518"

// Session flags, and text on bright surfaces.
var black = "#050505"
var white = "#ffffff"
var yellow = "#ffd21a"
var blue = "#1f5fe0"
var blueRim = "#5c8ff5"
var inkOnBright = "#141210"

var labelSize = 10
var fontFamily = "B612"
var fontFiles = ["fonts/B612-Regular.otf", "fonts/B612-Bold.otf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
