/* Numbers of the add-in's resources. */
#ifndef DRAWBOARD_RESOURCES_H
#define DRAWBOARD_RESOURCES_H

#define DRAWBOARD_MAIN_WINDOW 101

#endif /* DRAWBOARD_RESOURCES_H */
