<a class="logo" href="{logo_url}"><img src="/img/logo.svg" alt="{htmlspecialchars logo_title}"><small>{logo_text}</small></a>
