# Sourced by the scripts that render the styles: what each is shown on. Grounds are a matter of presentation, so the
# styles themselves do not hold any.

style_name() {  # file
    sed -n 's/^  "name": "\(.*\)",$/\1/p' "$1"
}

style_ground() {  # file
    case "$(basename "$1" .json)" in
        candy)          echo '#f7b8c8' ;;
        chrome)         echo '#aab7c4' ;;
        comic)          echo '#49a7e8' ;;
        ember|neon)     echo '#14101f' ;;
        hot-spot)       echo '#14101f' ;;
        glass)          echo '#4f86b5' ;;
        gold)           echo '#3b2233' ;;
        ice)            echo '#0d2438' ;;
        letterpress)    echo '#b9bec4' ;;
        long-lit-emboss) echo '#d5d9df' ;;
        retro)          echo '#e8c9a0' ;;
        sticker)        echo '#3fb7a9' ;;
        subtitle)       echo '#6b7f6a' ;;
        *)              echo '#eef0f2' ;;
    esac
}

render_style() {  # qxrender, style file, output, size
    "$1" --text "$(style_name "$2")" --family Roboto --weight 700 --size "$4" --style "$2" --trim 20 \
        --background "$(style_ground "$2")" -o "$3"
}
