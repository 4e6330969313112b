# SPDX-License-Identifier: MIT
# The program's icon in every size that desktops ask for, drawn from the one picture.

set(VELMORA_ICON "${CMAKE_SOURCE_DIR}/Resources/icons/com.velmora.Velmora.svg")
set(VELMORA_ICON_SIZES 16 22 24 32 48 64 96 128 256 512)
set(VELMORA_ICON_FOLDER "${CMAKE_BINARY_DIR}/icons/hicolor")

add_executable(velmora_render_icon "${CMAKE_SOURCE_DIR}/Resources/icons/RenderIcon.cpp")
target_link_libraries(velmora_render_icon PRIVATE Qt6::Gui Qt6::Svg velmora_warnings)
set(icons)
foreach(size ${VELMORA_ICON_SIZES})
    set(folder "${VELMORA_ICON_FOLDER}/${size}x${size}/apps")
    set(icon "${folder}/com.velmora.Velmora.png")
    add_custom_command(OUTPUT "${icon}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
        COMMAND "${CMAKE_COMMAND}" -E env QT_QPA_PLATFORM=offscreen
                $<TARGET_FILE:velmora_render_icon> "${VELMORA_ICON}" ${size} "${icon}"
        DEPENDS velmora_render_icon "${VELMORA_ICON}"
        COMMENT "Drawing the icon at ${size} pixels")
    list(APPEND icons "${icon}")
endforeach()
add_custom_target(velmora_icons ALL DEPENDS ${icons})
