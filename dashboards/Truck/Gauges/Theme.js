.pragma library

// The night setting of a long-distance cab: blue-grey glass, white numbers, one calm blue, and warm
// colours only for what needs attention.

// Text, from values down to what is off or unknown.
var ink = "#f2f7fb"
var muted = "#93a7b8"
var faint = "#5d7183"
var ghost = "#22313f"

// Surfaces.
var faceTop = "#182633"
var faceMiddle = "#131f2a"
var faceBottom = "#0f1922"
var metal = "#2f4253"
var metalDark = "#131e28"
var night = "#070c11"
var bezelBright = "#8d9fae"
var bezelDark = "#273643"
var bezelEdge = "#04070a"

// Meanings.
var accent = "#45b8ff"
var good = "#3fd08a"
var caution = "#ffb42e"
var danger = "#ff4a45"
var flash = "#ffffff"
var cold = "#7fc8ff"

// Session flags, and text on bright surfaces.
var black = "#050505"
var white = "#ffffff"
var yellow = "#ffd21a"
var blue = "#1f5fe0"
var blueRim = "#5c8ff5"
var inkOnBright = "#0a1118"

var labelSize = 11
var fontFamily = "Roboto"
var fontFiles = ["fonts/Roboto-Regular.ttf", "fonts/Roboto-Bold.ttf"]
var kerning = true
var segmentFamily = "DSEG7 Classic"
var segmentFile = "fonts/DSEG7Classic-Bold.ttf"
