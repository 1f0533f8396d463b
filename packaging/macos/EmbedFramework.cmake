# Puts a framework into a bundle, links in it as links, without what only compilers read:
# cmake -D FRAMEWORK=... -D BUNDLE=... -P EmbedFramework.cmake
cmake_path(GET FRAMEWORK FILENAME name)
set(frameworks ${BUNDLE}/Contents/Frameworks)
# A file that a newer version has no more would break its seal.
file(REMOVE_RECURSE ${frameworks}/${name})
file(COPY ${FRAMEWORK} DESTINATION ${frameworks} USE_SOURCE_PERMISSIONS
    REGEX "/(Headers|PrivateHeaders|Modules)$" EXCLUDE)
