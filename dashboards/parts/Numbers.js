.pragma library

/// Uses a real minus sign; a value that rounds to zero has none.
function fixed(value, decimals) {
    return value.toFixed(decimals).replace(/^-(?=[0.]*$)/, "").replace("-", "−")
}

/// Always with a sign.
function signed(value, decimals) {
    const text = fixed(value, decimals)
    return text.startsWith("−") ? text : "+" + text
}
